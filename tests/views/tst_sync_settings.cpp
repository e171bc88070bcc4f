// The Sync tab on a real display against Radicale on 127.0.0.1: the account
// typed in, the server's calendars found and one chosen, sync turned on
// with the password in the (stand-in) keyring and nowhere in the store
// file, the error of a failed pass shown, and sync turned off from the
// keyboard. Pictures in both palettes, English and German.
#include "ViewsFixture.h"
#include "services/SyncService.h"
#include "settings/SyncAccountStore.h"
#include "support/FakeSync.h"
#include "support/Radicale.h"
#include "sync/CalDavClient.h"
#include "views/SettingsWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QDir>
#include <QDirIterator>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

namespace {

// Every byte the store left on disk (the file, its WAL and journal).
QByteArray storeBytes(const QString &folder)
{
    QByteArray all;
    QDirIterator files(folder, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            all += file.readAll();
    }
    return all;
}

} // namespace

class SyncSettingsTest : public QObject
{
    Q_OBJECT

    QQuickWindow *m_window = nullptr;
    QQuickItem *item(const QString &name)
    {
        QQuickItem *found = findItem(m_window->contentItem(), name);
        if (!found)
            qWarning("no item %s", qPrintable(name));
        return found;
    }
    void click(const QString &name)
    {
        QQuickItem *target = item(name);
        QVERIFY(target);
        QTRY_VERIFY2(target->isVisible(), qPrintable(name));
        QVERIFY2(target->isEnabled(), qPrintable(name));
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          target->mapToScene(QPointF(target->width() / 2, target->height() / 2)).toPoint());
    }
    // Into an empty field, by keys.
    void type(const QString &name, const QString &text)
    {
        click(name);
        QTRY_VERIFY(item(name)->hasActiveFocus());
        QTest::keyClick(m_window, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(m_window, Qt::Key_Delete);
        for (const char c : text.toLatin1())
            QTest::keyClick(m_window, c);
    }
    QString text(const QString &name) { return item(name)->property("text").toString(); }

private Q_SLOTS:
    void accountThroughTheTab()
    {
        test::Radicale server;
        QString why;
        QVERIFY2(server.start(&why), qPrintable(why));
        QNetworkAccessManager maker;
        QCOMPARE(server.makeCalendar(maker, QStringLiteral("/alice/tasks/"), QStringLiteral("Tasks"),
                                     QStringLiteral("VTODO")),
                 201);
        QCOMPARE(server.makeCalendar(maker, QStringLiteral("/alice/events/"), QStringLiteral("Events"),
                                     QStringLiteral("VEVENT")),
                 201);

        ViewsFixture f;
        QTemporaryDir folder;
        PersistenceController store(folder.filePath(QStringLiteral("Tarnwell.sqlite")));
        SyncAccountStore accounts(store.viewContext());
        FakePass pass;
        FakeSecrets secrets;
        SyncService sync({accounts, &secrets, &pass, f.time.clock()});
        sync.start();
        QNetworkAccessManager network;
        int discoveries = 0;
        const auto discover = [&](const QUrl &url, const QString &user, const QString &password,
                                  const SyncSettingsModel::Discovered &done) {
            ++discoveries;
            auto *client = new sync::CalDavClient(network);
            client->setCredentials(user, password);
            client->discover(
                url, [client, done](const sync::CalDavStatus &status, const QList<sync::CalDavCollection> &found) {
                    client->deleteLater();
                    done(status, found);
                });
        };
        ThemeController theme;
        theme.setForced(ThemeController::Forced::light);
        UiEngine ui(theme);
        QList<QQmlError> warnings;
        QObject::connect(&ui.engine(), &QQmlEngine::warnings, &ui,
                         [&](const QList<QQmlError> &list) { warnings << list; });
        SettingsWindowController settings({f.settings,
                                           f.sound,
                                           f.routines,
                                           ui,
                                           [] { return QString(); },
                                           {},
                                           [] { return DesktopFacts{}; },
                                           QStringLiteral("1.0"),
                                           folder.path(),
                                           &sync,
                                           discover});
        settings.show(QStringLiteral("sync"));
        m_window = settings.window();
        QVERIFY(m_window);
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        QTRY_VERIFY(item(QStringLiteral("page-sync"))->isVisible());
        QVERIFY(!item(QStringLiteral("syncUnavailable"))->isVisible());
        QCOMPARE(text(QStringLiteral("syncState")), QStringLiteral("Sync is off. Tasks stay on this computer only."));
        // Nothing to turn on before a calendar is chosen.
        QVERIFY(!item(QStringLiteral("syncTurnOn"))->isEnabled());

        // A wrong password is told as such.
        type(QStringLiteral("syncServer"), server.base().toString());
        type(QStringLiteral("syncUser"), server.user);
        type(QStringLiteral("syncPassword"), QStringLiteral("wrong"));
        click(QStringLiteral("syncFind"));
        QTRY_COMPARE_WITH_TIMEOUT(text(QStringLiteral("syncMessage")),
                                  QStringLiteral("The server did not accept the user name or password."), 15000);

        // The right one finds the calendar for tasks and leaves out the one for events.
        type(QStringLiteral("syncPassword"), server.password);
        click(QStringLiteral("syncFind"));
        QTRY_COMPARE_WITH_TIMEOUT(text(QStringLiteral("syncMessage")),
                                  QStringLiteral("1 calendar for tasks found. Choose one below."), 15000);
        QQuickItem *calendar = item(QStringLiteral("syncCalendar"));
        QTRY_VERIFY(calendar->isVisible());
        QCOMPARE(calendar->property("count").toInt(), 1);
        QCOMPARE(calendar->property("displayText").toString(), QStringLiteral("Tasks"));
        QCOMPARE(discoveries, 2);

        // Turned on: the password is in the keyring, the first pass has it, the store file never saw it.
        click(QStringLiteral("syncTurnOn"));
        const sync::SyncAccount account{server.base(), server.user,
                                        server.base().resolved(QUrl(QStringLiteral("/alice/tasks/")))};
        QCOMPARE(secrets.passwords.value(SyncService::secretKey(account)), server.password);
        QCOMPARE(accounts.account().collection, account.collection);
        QVERIFY(accounts.enabled());
        QCOMPARE(pass.runs.size(), 1);
        QCOMPARE(pass.runs[0].password, server.password);
        QCOMPARE(text(QStringLiteral("syncPassword")), QString());
        store.save();
        const QByteArray onDisk = storeBytes(folder.path());
        QVERIFY(onDisk.contains(server.user.toUtf8()));
        QVERIFY(!onDisk.contains(server.password.toUtf8()));

        // A failed pass shows why.
        QTRY_COMPARE(text(QStringLiteral("syncState")), QStringLiteral("Syncing…"));
        pass.answer(sync::CalDavError::network);
        QTRY_VERIFY(item(QStringLiteral("syncError"))->isVisible());
        QCOMPARE(text(QStringLiteral("syncError")),
                 QStringLiteral("The server cannot be reached. Tarnwell tries again later."));
        QVERIFY(item(QStringLiteral("syncNow"))->isEnabled());

        // Pictures: both palettes, English and German.
        const QString dir = qEnvironmentVariable("TARNWELL_ARTIFACTS");
        for (const bool dark : {false, true}) {
            theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
            for (const QString &language : {QStringLiteral("en"), QStringLiteral("de")}) {
                QVERIFY(f.translations.install(language));
                ui.retranslate();
                settings.retranslate();
                settings.show(QStringLiteral("sync")); // the tab list is made anew in another language
                QTRY_VERIFY(item(QStringLiteral("page-sync"))->isVisible());
                QTest::qWait(theme.motionMedium() + 50);
                if (language == QLatin1String("de"))
                    QVERIFY2(!text(QStringLiteral("syncError")).contains(QLatin1String("reached")),
                             qPrintable(text(QStringLiteral("syncError"))));
                QImage picture;
                QTRY_VERIFY((picture = m_window->grabWindow(), !picture.isNull()));
                if (!dir.isEmpty()) {
                    QDir().mkpath(dir);
                    QVERIFY(
                        picture.save(QStringLiteral("%1/settings-sync-on-%2-%3-%4x.png")
                                         .arg(dir, dark ? QStringLiteral("dark") : QStringLiteral("light"), language)
                                         .arg(m_window->effectiveDevicePixelRatio())));
                }
            }
        }
        QVERIFY(f.translations.install(QStringLiteral("en")));
        ui.retranslate();
        settings.retranslate();
        settings.show(QStringLiteral("sync"));
        QTRY_VERIFY(item(QStringLiteral("page-sync"))->isVisible());

        // Off, from the keyboard: the question, then "remove them from this computer".
        QQuickItem *off = item(QStringLiteral("syncTurnOff"));
        off->forceActiveFocus();
        QTest::keyClick(m_window, Qt::Key_Space);
        QTRY_VERIFY(item(QStringLiteral("syncOffKeep"))->hasActiveFocus());
        // Escape takes the question back and leaves the window open; asked again, it is answered.
        QTest::keyClick(m_window, Qt::Key_Escape);
        QTRY_VERIFY(item(QStringLiteral("syncTurnOff"))->isVisible());
        QVERIFY(m_window->isVisible());
        QVERIFY(accounts.enabled());
        item(QStringLiteral("syncTurnOff"))->forceActiveFocus();
        QTest::keyClick(m_window, Qt::Key_Space);
        QTRY_VERIFY(item(QStringLiteral("syncOffKeep"))->hasActiveFocus());
        QTest::keyClick(m_window, Qt::Key_Tab);
        QTRY_VERIFY(item(QStringLiteral("syncOffRemove"))->hasActiveFocus());
        QTest::keyClick(m_window, Qt::Key_Space);
        QCOMPARE(pass.forgotten, QList<bool>{true});
        QVERIFY(secrets.passwords.isEmpty());
        QVERIFY(!accounts.enabled());
        QTRY_COMPARE(text(QStringLiteral("syncState")),
                     QStringLiteral("Sync is off. Tasks stay on this computer only."));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.value(0).toString()));
    }
};

QTEST_MAIN(SyncSettingsTest)
#include "tst_sync_settings.moc"
