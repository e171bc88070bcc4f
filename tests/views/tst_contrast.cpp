// What the eye gets: buttons in every state they take (plain, primary,
// chosen, flat; with keyboard focus) drawn in both palettes, then sampled
// from the rendered picture. Text must stand at 4.5:1 against what is behind
// it, and the focus ring at 3:1 against the window.
#include "kit/Translations.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

namespace {

double luminance(QColor c)
{
    const auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double contrast(QColor a, QColor b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

const char *gallery = R"(
import QtQuick
import Tarnwell.Views
ThemedWindow {
    width: 520; height: 120; visible: true
    Row {
        x: 20; y: 40; spacing: 24
        PopButton { objectName: "plain"; text: "Plain" }
        PopButton { objectName: "primary"; text: "Primary"; highlighted: true }
        PopButton { objectName: "chosen"; text: "Chosen"; checkable: true; checked: true }
        PopButton { objectName: "flat"; text: "Flat"; flat: true }
    }
}
)";

} // namespace

class ContrastTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyButtonStateReadsInBothPalettes_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QString>("button");
        for (bool dark : {false, true})
            for (const char *name : {"plain", "primary", "chosen", "flat"})
                QTest::addRow("%s %s", dark ? "dark" : "light", name) << dark << QString::fromLatin1(name);
    }

    void everyButtonStateReadsInBothPalettes()
    {
        QFETCH(bool, dark);
        QFETCH(QString, button);
        Translations translations;
        translations.install(QStringLiteral("en"));
        ThemeController theme;
        theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
        UiEngine ui(theme);
        ui.engine().addImportPath(QStringLiteral("qrc:/"));
        QQmlComponent component(&ui.engine());
        component.setData(gallery, QUrl(QStringLiteral("qrc:/Tarnwell/Views/Gallery.qml")));
        std::unique_ptr<QObject> object(component.create());
        auto *window = qobject_cast<QQuickWindow *>(object.get());
        QVERIFY2(window, qPrintable(component.errorString()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        window->requestActivate();
        QTRY_VERIFY(window->isActive());
        auto *item = window->findChild<QQuickItem *>(button);
        QVERIFY(item);
        item->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(item->property("visualFocus").toBool());

        QImage picture;
        QTRY_VERIFY((picture = window->grabWindow(), !picture.isNull()));
        const QRectF box = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
        const QString dir = QString::fromLocal8Bit(qgetenv("TARNWELL_ARTIFACTS"));
        if (!dir.isEmpty())
            picture.save(QStringLiteral("%1/buttons-%2-%3.png")
                             .arg(dir, dark ? QStringLiteral("dark") : QStringLiteral("light"), button));
        const qreal scale = window->effectiveDevicePixelRatio();
        const auto at = [&](qreal x, qreal y) { return picture.pixelColor(int(x * scale), int(y * scale)); };

        // Behind the text: just inside the frame. The text: the pixel of the
        // label area that stands out most from it.
        const QColor behind = at(box.left() + 4, box.top() + 4);
        double best = 1;
        for (qreal x = box.left() + 6; x < box.right() - 6; x += 0.5)
            for (qreal y = box.top() + 6; y < box.bottom() - 6; y += 0.5)
                best = std::max(best, contrast(at(x, y), behind));
        QVERIFY2(best >= 4.5, qPrintable(QStringLiteral("text %1:1").arg(best, 0, 'f', 2)));

        // The focus ring, just outside the button, against the window.
        const QColor ring = at(box.left() - 2, box.center().y());
        const QColor window_ = at(box.left() - 8, box.center().y());
        const double ringContrast = contrast(ring, window_);
        QVERIFY2(ringContrast >= 3, qPrintable(QStringLiteral("focus ring %1:1").arg(ringContrast, 0, 'f', 2)));
    }
};

QTEST_MAIN(ContrastTest)
#include "tst_contrast.moc"
