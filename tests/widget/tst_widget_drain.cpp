// The command folder: what the drain applies, drops, deletes and leaves
// alone, in which order, and how it stands up to a hostile folder.
#include "WidgetFixture.h"
#include "kit/Translations.h"
#include "widget/WidgetCommandDrainService.h"
#include "widget/WidgetSurface.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <sys/stat.h>
#include <unistd.h>

using Action = WidgetCommand::Action;

namespace {

// Collects the widget category's log lines.
QStringList g_log;
QtMessageHandler g_previous = nullptr;
void collect(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (context.category && QByteArray(context.category) == "tarnwell.widget")
        g_log << message;
    g_previous(type, context, message);
}

QString folder()
{
    return *TarnwellAppGroup::commandsDirectoryPath();
}

QString put(const WidgetCommand &command, const QString &name = {})
{
    QString path = folder() + u'/' + (name.isEmpty() ? command.fileName() : name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    file.write(command.encode());
    return path;
}

} // namespace

class WidgetDrainTest : public QObject
{
    Q_OBJECT

    Translations m_translations;

    struct Drain
    {
        explicit Drain(WidgetFixture &f)
            : writer(f.service, f.settings, f.builder())
            , drain(&writer, {f.service, f.sound, f.rec, f.time.clock()})
        {
            QTRY_VERIFY(!drain.isDraining());
        }
        // One whole drain, now.
        int run()
        {
            QSignalSpy finished(&drain, &WidgetCommandDrainService::drainFinished);
            drain.drain();
            if (finished.isEmpty() && !finished.wait(10000))
                return -1;
            return finished.first().first().toInt();
        }
        WidgetSnapshotWriter writer;
        WidgetCommandDrainService drain;
    };

private Q_SLOTS:
    void initTestCase()
    {
        m_translations.install(QStringLiteral("en"));
        g_previous = qInstallMessageHandler(collect);
    }
    void init() { g_log.clear(); }

    void folderIsPrivate()
    {
        WidgetFixture f;
        Drain d(f);
        QVERIFY(d.drain.isWatching());
        QCOMPARE(QFileInfo(folder()).permissions() & 0x0077, QFileDevice::Permissions());
        struct stat info;
        QCOMPARE(::stat(QFile::encodeName(folder()).constData(), &info), 0);
        QCOMPARE(info.st_mode & 07777, 0700u);
    }

    void staleRuleAndDeleteBeforeAct()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Task *b = f.add(QStringLiteral("B"));
        Drain d(f);
        const QString stale = put(WidgetCommand::make(Action::complete, b->id(), f.time.now.addSecs(-301)));
        const QString fresh = put(WidgetCommand::make(Action::complete, a->id(), f.time.now.addSecs(-300)));
        // A press dated in the future is never stale.
        const QString future = put(WidgetCommand::make(Action::toggleTimer, b->id(), f.time.now.addSecs(3600)));
        QCOMPARE(d.run(), 2);
        QVERIFY(!QFile::exists(stale) && !QFile::exists(fresh) && !QFile::exists(future));
        QVERIFY(a->completed());
        QVERIFY(!b->completed());
        QVERIFY(b->activeStartedAt()); // the future toggle started it
        QCOMPARE(g_log,
                 QStringList({QStringLiteral("Dropped a stale widget action: complete"),
                              QStringLiteral("Applied complete from the widget"),
                              QStringLiteral("Applied toggleTimer from the widget")}));
        // A widget press completes silently: no next-up screen.
        QVERIFY(f.rec.nextUp.isEmpty());
        QVERIFY(d.writer.lastWritten()->anchor->id == b->id());
    }

    void pressesApplyInOrderOfRequest()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Drain d(f);
        // Written newest first; applied oldest first: start, pause, then done.
        put(WidgetCommand::make(Action::complete, a->id(), f.time.now.addSecs(-1)));
        put(WidgetCommand::make(Action::toggleTimer, a->id(), f.time.now.addSecs(-2)));
        put(WidgetCommand::make(Action::toggleTimer, a->id(), f.time.now.addSecs(-3)));
        QCOMPARE(d.run(), 3);
        QCOMPARE(g_log,
                 QStringList({QStringLiteral("Applied toggleTimer from the widget"),
                              QStringLiteral("Applied toggleTimer from the widget"),
                              QStringLiteral("Applied complete from the widget")}));
        QVERIFY(a->completed());
    }

    void commandsThatChangeNothing()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Task *gone = f.add(QStringLiteral("Gone"));
        f.tasks.complete(a, f.time.now, 10);
        f.context.deleteObject(gone);
        f.context.save();
        Drain d(f);
        QSignalSpy written(&d.writer, &WidgetSnapshotWriter::written);
        const QString completed = put(WidgetCommand::make(Action::complete, a->id(), f.time.now));
        const QString deleted = put(WidgetCommand::make(Action::toggleTimer, gone->id(), f.time.now));
        QCOMPARE(d.run(), 0);
        QVERIFY(!QFile::exists(completed) && !QFile::exists(deleted));
        QCOMPARE(g_log, QStringList{QStringLiteral("Widget action arrived for a task that no longer exists")});
        QCOMPARE(written.size(), 0); // no refresh
    }

    void filesThatAreNotCommands()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Drain d(f);
        WidgetCommand unknown = WidgetCommand::make(Action::complete, a->id(), f.time.now);
        QByteArray bytes = unknown.encode();
        bytes.replace("\"complete\"", "\"archive\"");
        const QString unknownPath = folder() + u'/' + unknown.fileName();
        QFile file(unknownPath);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        // Another extension is not even looked at.
        const QString text = put(WidgetCommand::make(Action::complete, a->id(), f.time.now), QStringLiteral("a.txt"));
        // A command under a name that is not its id: applied once, and its
        // file stays (the deletion by id misses it) without being applied again.
        const WidgetCommand renamed = WidgetCommand::make(Action::toggleTimer, a->id(), f.time.now);
        const QString renamedPath = put(renamed, QStringLiteral("press.json"));

        QCOMPARE(d.run(), 1);
        QVERIFY(a->activeStartedAt());
        QVERIFY(d.drain.drained().contains(renamed.id));
        QVERIFY(QFile::exists(unknownPath) && QFile::exists(text) && QFile::exists(renamedPath));
        QCOMPARE(g_log.size(), 2);
        QVERIFY(g_log.contains(QStringLiteral("Ignored %1 in the widget-commands directory: not a widget command")
                                   .arg(unknown.fileName())));
        g_log.clear();
        QCOMPARE(d.run(), 0);
        QVERIFY(a->activeStartedAt());
        QVERIFY(g_log.isEmpty()); // neither retried nor logged again
    }

    void hostileFolder()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Drain d(f);
        QTemporaryDir elsewhere;
        // A link to a real command elsewhere is not followed.
        const WidgetCommand linked = WidgetCommand::make(Action::complete, a->id(), f.time.now);
        QFile target(elsewhere.filePath(QStringLiteral("real.json")));
        QVERIFY(target.open(QIODevice::WriteOnly));
        target.write(linked.encode());
        target.close();
        QVERIFY(QFile::link(target.fileName(), folder() + u'/' + linked.fileName()));
        // Too large, a pipe (opening it must not hang), a folder.
        WidgetCommand big = WidgetCommand::make(Action::complete, a->id(), f.time.now);
        QByteArray padded = big.encode();
        padded.insert(1, QByteArray(5000, ' '));
        QFile bigFile(folder() + u'/' + big.fileName());
        QVERIFY(bigFile.open(QIODevice::WriteOnly));
        bigFile.write(padded);
        bigFile.close();
        QCOMPARE(::mkfifo(QFile::encodeName(folder() + QStringLiteral("/pipe.json")).constData(), 0600), 0);
        QVERIFY(QDir(folder()).mkdir(QStringLiteral("dir.json")));
        // Another user's file, where the test may hand one over (as root).
        const bool foreign = ::geteuid() == 0 &&
            ::chown(QFile::encodeName(put(WidgetCommand::make(Action::complete, a->id(), f.time.now))).constData(),
                    65534, 65534) == 0;

        QCOMPARE(d.run(), 0);
        QVERIFY(!a->completed());
        QVERIFY(QFile::exists(target.fileName()));
        QCOMPARE(g_log.size(), 4 + int(foreign));
        QCOMPARE(g_log.join(u'\n').contains(QStringLiteral("owned by another user")), foreign);
        QVERIFY(g_log.join(u'\n').contains(QStringLiteral("a symbolic link, not followed")));
        QVERIFY(g_log.join(u'\n').contains(QStringLiteral("larger than 4096 bytes")));
        QCOMPARE(g_log.join(u'\n').count(QStringLiteral("not a regular file")), 2);
    }

    void folderReplacedByLink()
    {
        WidgetFixture f;
        QTemporaryDir elsewhere;
        QVERIFY(QDir().mkpath(*TarnwellAppGroup::containerPath()));
        QVERIFY(QFile::link(elsewhere.path(), folder()));
        {
            Drain d(f);
            QVERIFY(!d.drain.isWatching());
            QVERIFY(g_log.contains(QStringLiteral("Could not watch the widget-commands directory")));
        }
        // Taking it down removes the link, never what it points to.
        QFile marker(elsewhere.filePath(QStringLiteral("keep")));
        QVERIFY(marker.open(QIODevice::WriteOnly));
        marker.close();
        WidgetCommandStore().removeAll();
        QVERIFY(!QFileInfo(folder()).isSymLink());
        QVERIFY(QFile::exists(marker.fileName()));
    }

    void burstIsCoalescedIntoOneDrain()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        Drain d(f);
        QSignalSpy finished(&d.drain, &WidgetCommandDrainService::drainFinished);
        for (int i = 0; i < 5; ++i)
            put(WidgetCommand::make(Action::toggleTimer, a->id(), f.time.now.addSecs(-10 + i)));
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(finished.first().first().toInt(), 5);
        QVERIFY(a->activeStartedAt()); // five toggles: running
        // The drain's own deletions wake the watch once more; nothing is left to do.
        QTest::qWait(300);
        int total = 0;
        for (const auto &call : finished)
            total += call.first().toInt();
        QCOMPARE(total, 5);
    }

    void floodDoesNotFreezeTheLoop()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        QVERIFY(QDir().mkpath(folder()));
        for (int i = 0; i < 10000; ++i) {
            QFile junk(folder() + QStringLiteral("/%1.json").arg(i));
            QVERIFY(junk.open(QIODevice::WriteOnly));
            junk.write(i % 2 ? "{}" : "not json");
        }
        put(WidgetCommand::make(Action::complete, a->id(), f.time.now));

        // A 1 ms timer measures the longest stretch the loop was held, in
        // the thread's CPU time, so that a busy machine taking the processor
        // away does not count.
        const auto cpuMs = [] {
            timespec t;
            ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
            return qint64(t.tv_sec) * 1000 + t.tv_nsec / 1000000;
        };
        qint64 lastTick = 0;
        qint64 longest = 0;
        QTimer probe;
        probe.setInterval(1);
        connect(&probe, &QTimer::timeout, [&] {
            const qint64 now = cpuMs();
            longest = std::max(longest, now - lastTick);
            lastTick = now;
        });
        WidgetSnapshotWriter writer(f.service, f.settings, f.builder());
        WidgetCommandDrainService drain(&writer, {f.service, f.sound, f.rec, f.time.clock()});
        QSignalSpy finished(&drain, &WidgetCommandDrainService::drainFinished);
        lastTick = cpuMs();
        probe.start();
        QVERIFY(finished.wait(60000));
        probe.stop();
        QCOMPARE(finished.first().first().toInt(), 1);
        QVERIFY(a->completed());
        // Ten named lines and one count, not ten thousand lines.
        QCOMPARE(g_log.size(), 10 + 1 + 1);
        QVERIFY(g_log.contains(QStringLiteral("Ignored 9990 more files in the widget-commands directory")));
        // Slices are 4 ms; the bound leaves room for sanitizer builds.
        QVERIFY2(longest < 50, qPrintable(QStringLiteral("the loop was held for %1 ms").arg(longest)));
        QVERIFY(drain.isWatching());
    }

    void surfaceStartAndStop()
    {
        WidgetFixture f;
        Task *a = f.add(QStringLiteral("A"));
        // A press left while the application was not running is carried out
        // at start, after the first snapshot is on disk.
        QVERIFY(QDir().mkpath(folder()));
        put(WidgetCommand::make(Action::complete, a->id(), f.time.now.addSecs(-60)));
        WidgetSurface surface(
            {f.context, f.settings, f.service, f.sound, f.rec, f.calendar, f.time.clock(), &f.rollover, nullptr});
        surface.start();
        QVERIFY(QFile::exists(*TarnwellAppGroup::snapshotPath()));
        QTRY_VERIFY(a->completed());
        // The snapshot after the completion is written from the event loop.
        QTRY_VERIFY(!surface.writer()->lastWritten()->anchor);
        WidgetSnapshotWriter *writer = surface.writer();
        surface.start(); // running already: nothing changes
        QCOMPARE(surface.writer(), writer);

        surface.stop();
        QVERIFY(!surface.isRunning());
        QVERIFY(!QFile::exists(*TarnwellAppGroup::snapshotPath()));
        QVERIFY(!QFileInfo::exists(folder()));
    }
};

QTEST_GUILESS_MAIN(WidgetDrainTest)
#include "tst_widget_drain.moc"
