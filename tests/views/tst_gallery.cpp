// The components as the eye gets them. The gallery window shows every
// component in every state it takes; this test brings each passing state
// about as a person would (the pointer over it, the button held down, the
// keyboard focus on it), draws the window in the light and the dark palette
// at the scale of the run (the suite runs at QT_SCALE_FACTOR 1 and 2), and
// samples the picture: text at 4.5:1 or better against what is behind it,
// icons and the focus ring at 3:1 against their surroundings. A picture of
// every state of every component is saved per palette and scale.
#include "views/ThemeController.h"
#include "views/UiEngine.h"
#include "icons/ApplicationIcon.h"
#include "icons/IconPainter.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSvgRenderer>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

namespace {

struct Sample
{
    QQuickItem *item = nullptr;
    QString component;
    QString state;
};

void collect(QQuickItem *item, QList<Sample> &out)
{
    static const QStringList states{QStringLiteral("normal"),  QStringLiteral("hover"),    QStringLiteral("pressed"),
                                    QStringLiteral("focused"), QStringLiteral("disabled"), QStringLiteral("checked"),
                                    QStringLiteral("overdue")};
    const QString name = item->objectName();
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot > 0 && states.contains(name.mid(dot + 1)) && item->isVisible())
        out << Sample{item, name.left(dot), name.mid(dot + 1)};
    const auto children = item->childItems();
    for (QQuickItem *child : children)
        collect(child, out);
}

// The items under `root` (itself included) with this name, shown on screen.
void named(QQuickItem *root, const QString &name, QList<QQuickItem *> &out)
{
    if (root->objectName() == name && root->isVisible() && root->opacity() > 0.5 && root->width() > 0)
        out << root;
    const auto children = root->childItems();
    for (QQuickItem *child : children)
        named(child, name, out);
}

class Picture
{
public:
    Picture(QImage image, qreal scale)
        : m_image(std::move(image))
        , m_scale(scale)
    {
    }

    QRect pixels(const QRectF &logical) const
    {
        return QRectF(logical.x() * m_scale, logical.y() * m_scale, logical.width() * m_scale,
                      logical.height() * m_scale)
            .toAlignedRect()
            .intersected(m_image.rect());
    }
    QColor at(qreal x, qreal y) const { return m_image.pixelColor(int(x * m_scale), int(y * m_scale)); }

    // Within the box: the most common colour (what the text or icon stands
    // on), and the contrast of the pixel that stands out most from it.
    std::pair<QColor, double> figure(const QRectF &box) const
    {
        const QRect r = pixels(box);
        QHash<QRgb, int> counts;
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x)
                ++counts[m_image.pixel(x, y)];
        QRgb behind = 0;
        int most = -1;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it)
            if (it.value() > most)
                most = it.value(), behind = it.key();
        double best = 1;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it)
            best = std::max(best, ThemeController::contrast(QColor(it.key()), QColor(behind)));
        return {QColor(behind), best};
    }

    const QImage &image() const { return m_image; }

private:
    QImage m_image;
    qreal m_scale;
};

QRectF sceneBox(QQuickItem *item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

} // namespace

class GalleryTest : public QObject
{
    Q_OBJECT

    // What fails in one sample, or nothing.
    QStringList measure(const Picture &picture, const Sample &sample)
    {
        QStringList failures;
        const QString where = sample.component + QLatin1Char('.') + sample.state;
        QList<QQuickItem *> texts;
        named(sample.item, QStringLiteral("text"), texts);
        named(sample.item, QStringLiteral("placeholder"), texts);
        if (qobject_cast<QQuickItem *>(sample.item) && sample.item->property("role").isValid())
            texts << sample.item; // a TextBlock sample is itself the text
        for (QQuickItem *text : std::as_const(texts)) {
            if (text->property("text").toString().isEmpty())
                continue;
            const auto [behind, contrast] = picture.figure(sceneBox(text));
            if (contrast < 4.5)
                failures
                    << QStringLiteral("%1: text %2:1 on %3").arg(where).arg(contrast, 0, 'f', 2).arg(behind.name());
        }
        QList<QQuickItem *> glyphs;
        named(sample.item, QStringLiteral("glyph"), glyphs);
        for (QQuickItem *glyph : std::as_const(glyphs)) {
            const auto [behind, contrast] = picture.figure(sceneBox(glyph));
            if (contrast < 3)
                failures
                    << QStringLiteral("%1: icon %2:1 on %3").arg(where).arg(contrast, 0, 'f', 2).arg(behind.name());
        }
        if (sample.state == QLatin1String("focused")) {
            QList<QQuickItem *> rings;
            named(sample.item, QStringLiteral("focusRing"), rings);
            if (rings.isEmpty())
                failures << where + QStringLiteral(": no focus ring");
            for (QQuickItem *ring : std::as_const(rings)) {
                // Across the ring's left side at its middle: the ring's own
                // colour against the pixels just outside and just inside it.
                const QRectF box = sceneBox(ring);
                const qreal width = ring->property("border").value<QObject *>()->property("width").toReal();
                const qreal y = box.center().y();
                const QColor outside = picture.at(box.left() - 1.5, y);
                const QColor inside = picture.at(box.left() + width + 0.5, y);
                double against = 1;
                for (int step = 0; step < int(width * 2); ++step) {
                    const QColor line = picture.at(box.left() + step / 2.0, y);
                    against = std::max(
                        against,
                        std::min(ThemeController::contrast(line, outside), ThemeController::contrast(line, inside)));
                }
                if (against < 3)
                    failures << QStringLiteral("%1: focus ring %2:1 against %3 / %4")
                                    .arg(where)
                                    .arg(against, 0, 'f', 2)
                                    .arg(outside.name(), inside.name());
            }
        }
        return failures;
    }

private Q_SLOTS:
    void everyStateOfEveryComponentReads_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void everyStateOfEveryComponentReads()
    {
        QFETCH(bool, dark);
        ThemeController theme;
        theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
        UiEngine ui(theme);
        std::unique_ptr<QQuickWindow> window(ui.createWindow(QStringLiteral("Gallery.qml")));
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->requestActivate();
        QTRY_VERIFY(window->isActive());
        const qreal scale = window->effectiveDevicePixelRatio();
        QCOMPARE(scale, qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());

        QList<Sample> samples;
        collect(window->contentItem(), samples);
        QVERIFY(samples.size() > 60);
        QSet<QString> states;
        for (const Sample &s : std::as_const(samples))
            states.insert(s.state);
        QCOMPARE(states.size(), 7);

        const auto settle = [&] { QTest::qWait(theme.motionMedium() + 80); };
        const auto grab = [&] {
            QImage image = window->grabWindow();
            for (int tries = 0; image.isNull() && tries < 50; ++tries) {
                QTest::qWait(100);
                image = window->grabWindow();
            }
            return Picture(image.convertToFormat(QImage::Format_RGB32), scale);
        };
        QTest::mouseMove(window.get(), QPoint(2, 2));
        settle();
        QImage montage = grab().image();
        QVERIFY(!montage.isNull());
        QStringList failures;
        for (const Sample &sample : std::as_const(samples)) {
            const QPoint centre =
                sample.item->mapToScene(QPointF(sample.item->width() / 2, sample.item->height() / 2)).toPoint();
            if (sample.state == QLatin1String("hover"))
                QTest::mouseMove(window.get(), centre);
            else if (sample.state == QLatin1String("pressed"))
                QTest::mousePress(window.get(), Qt::LeftButton, {}, centre);
            else if (sample.state == QLatin1String("focused"))
                sample.item->forceActiveFocus(Qt::TabFocusReason);
            settle();
            const Picture picture = grab();
            failures << measure(picture, sample);
            // The state's picture goes into the montage of all states.
            const QRect cell = picture.pixels(sceneBox(sample.item).adjusted(-6, -6, 6, 6));
            QPainter(&montage).drawImage(cell.topLeft(), picture.image().copy(cell));

            if (sample.state == QLatin1String("pressed"))
                QTest::mouseRelease(window.get(), Qt::LeftButton, {}, centre);
            if (sample.state == QLatin1String("hover") || sample.state == QLatin1String("pressed"))
                QTest::mouseMove(window.get(), QPoint(2, 2));
            if (sample.state == QLatin1String("focused"))
                window->contentItem()->forceActiveFocus();
        }
        const QString dir = qEnvironmentVariable("TARNWELL_ARTIFACTS");
        if (!dir.isEmpty()) {
            QDir().mkpath(dir);
            montage.save(QStringLiteral("%1/gallery-%2-%3x.png")
                             .arg(dir, dark ? QStringLiteral("dark") : QStringLiteral("light"))
                             .arg(scale));
        }
        QVERIFY2(failures.isEmpty(), qPrintable(failures.join(u'\n')));
    }

    // Every icon is in the set, drawn for the pixels it gets (not stretched
    // from another size), solid at its core and entirely in its tint.
    void iconsAreDrawnForEveryScaleInTheirTint()
    {
        const QStringList wanted{QStringLiteral("play"),    QStringLiteral("pause"),    QStringLiteral("done"),
                                 QStringLiteral("extend"),  QStringLiteral("previous"), QStringLiteral("next"),
                                 QStringLiteral("today"),   QStringLiteral("menu"),     QStringLiteral("handle"),
                                 QStringLiteral("urgent"),  QStringLiteral("routine"),  QStringLiteral("rollover"),
                                 QStringLiteral("archive"), QStringLiteral("settings"), QStringLiteral("review"),
                                 QStringLiteral("bell"),    QStringLiteral("keyboard"), QStringLiteral("shield"),
                                 QStringLiteral("info"),    QStringLiteral("warning"),  QStringLiteral("folder"),
                                 QStringLiteral("search"),  QStringLiteral("wrapup")};
        const QStringList names = icons::names();
        const QColor tint(0x23, 0x69, 0x5a);
        for (const QString &name : wanted) {
            QVERIFY2(names.contains(name), qPrintable(name));
            for (qreal scale : {1.0, 1.25, 1.5, 2.0}) {
                const int side = int(20 * scale);
                const QImage image =
                    icons::render(name, QSize(side, side), tint).convertToFormat(QImage::Format_ARGB32);
                QCOMPARE(image.size(), QSize(side, side));
                int solid = 0;
                int painted = 0;
                for (int y = 0; y < side; ++y) {
                    for (int x = 0; x < side; ++x) {
                        const QColor c = image.pixelColor(x, y);
                        if (c.alpha() == 0)
                            continue;
                        ++painted;
                        solid += c.alpha() == 255 ? 1 : 0;
                        if (c.alpha() > 128 && (qAbs(c.red() - tint.red()) > 2 || qAbs(c.blue() - tint.blue()) > 2))
                            QFAIL(qPrintable(QStringLiteral("%1 at %2: %3").arg(name).arg(scale).arg(c.name())));
                    }
                }
                // Strokes two units wide have fully covered pixels at every scale.
                QVERIFY2(solid >= side / 2,
                         qPrintable(QStringLiteral("%1 at %2x: %3 solid pixels of %4")
                                        .arg(name)
                                        .arg(scale)
                                        .arg(solid)
                                        .arg(painted)));
            }
        }
        QVERIFY(icons::render(QStringLiteral("no-such-icon"), QSize(20, 20), tint).isNull());

        // The icons are painted without an SVG library; they must come out as
        // the SVG renderer draws their sources.
        for (const QString &name : names) {
            QSvgRenderer reference(QStringLiteral(":/icons/%1.svg").arg(name));
            QVERIFY2(reference.isValid(), qPrintable(name));
            for (int side : {20, 27, 48}) {
                QImage expected(side, side, QImage::Format_ARGB32_Premultiplied);
                expected.fill(Qt::transparent);
                {
                    QPainter painter(&expected);
                    painter.setRenderHint(QPainter::Antialiasing);
                    reference.render(&painter, QRectF(0, 0, side, side));
                }
                const QImage drawn = icons::render(name, QSize(side, side), Qt::black);
                QVERIFY2(!drawn.isNull(), qPrintable(name));
                qint64 difference = 0;
                int largest = 0;
                for (int y = 0; y < side; ++y) {
                    for (int x = 0; x < side; ++x) {
                        const int d = qAbs(qAlpha(expected.pixel(x, y)) - qAlpha(drawn.pixel(x, y)));
                        difference += d;
                        largest = std::max(largest, d);
                    }
                }
                const double mean = double(difference) / (side * side);
                QVERIFY2(
                    mean < 1.5 && largest < 96,
                    qPrintable(
                        QStringLiteral("%1 at %2 px: mean %3, largest %4").arg(name).arg(side).arg(mean).arg(largest)));
            }
        }
        const QImage app = icons::renderApplicationIcon(QSize(128, 128));
        QVERIFY(!app.isNull());
        QVERIFY(app.pixelColor(64, 64) != app.pixelColor(64, 20)); // the centre dot on its tile
    }
};

QTEST_MAIN(GalleryTest)
#include "tst_gallery.moc"
