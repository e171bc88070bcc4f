#include "StoreFailureNotice.h"

#include "kit/Logging.h"
#include "kit/Translations.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QVariantMap>

namespace tarnwell {

QString storeFailureTitle()
{
    //: Notification or dialog title when the data file cannot be opened at start; Tarnwell then closes
    //% "Tarnwell cannot open your data"
    return qtTrId("store.openFailed.title");
}

QString storeFailureBody(const QString &path, const QString &description)
{
    //: Notification or dialog text when the data file cannot be opened. %1: the file's path, %2: the reason (English, from the database)
    //% "%1 could not be opened (%2). The file was left untouched. Tarnwell will close now."
    return qtTrId("store.openFailed.body").arg(path, description);
}

std::unique_ptr<QMessageBox> makeStoreFailureDialog(const QString &path, const QString &description)
{
    auto box = std::make_unique<QMessageBox>(QMessageBox::Critical, storeFailureTitle(),
                                             storeFailureBody(path, description), QMessageBox::Close);
    box->setTextFormat(Qt::PlainText);
    //: The button of the dialog that says the data file cannot be opened
    //% "Close"
    box->button(QMessageBox::Close)->setText(qtTrId("store.openFailed.close"));
    return box;
}

void showStoreFailure(const QString &path, const QString &description)
{
    // The interface's language is not chosen yet: the store holds that setting.
    Translations translations;
    translations.install(Translations::resolve(QString()));
    const QString title = storeFailureTitle();
    const QString body = storeFailureBody(path, description);

    QDBusMessage notify = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    QVariantMap hints;
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(uchar(2)));
    hints.insert(QStringLiteral("desktop-entry"), QStringLiteral("org.tarnwell.Tarnwell"));
    notify << QStringLiteral("Tarnwell") << uint(0) << QStringLiteral("org.tarnwell.Tarnwell") << title
           << body.toHtmlEscaped() << QStringList() << hints << int(0);
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        const QDBusMessage reply = bus.call(notify, QDBus::Block, 3000);
        if (reply.type() == QDBusMessage::ReplyMessage) {
            qCInfo(lcPersistence).noquote()
                << QStringLiteral("Told the user in a notification why the store was refused");
            return;
        }
    }
    const QString platform = QGuiApplication::platformName();
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()) || platform == QLatin1String("offscreen") ||
        platform == QLatin1String("minimal")) {
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("No notification server and no screen: nobody was shown why the store was refused");
        return;
    }
    const auto box = makeStoreFailureDialog(path, description);
    QTimer::singleShot(120000, box.get(), &QMessageBox::reject);
    qCInfo(lcPersistence).noquote() << QStringLiteral("Showing why the store was refused in a dialog");
    box->exec();
}

} // namespace tarnwell
