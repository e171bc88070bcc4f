// What surrounds the real program in the tests that drive it like a person:
// a stand-in panel for its status item, a keyboard (xdotool into the focused
// window), its store as another reader sees it, and its settings row edited
// between runs.
#pragma once

#include "support/AtSpiTree.h"
#include "support/FakeStatusNotifierWatcher.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

// What a person's keyboard does: xdotool into the focused window, or under
// Wayland tests/support/wayland/wayland_keyboard (a virtual keyboard on the
// compositor's seat; suites built with TARNWELL_WAYLAND_KEYBOARD). Type only
// characters of the display's keyboard layout (US): for any other, xdotool
// binds a spare key for that one keystroke and unbinds it right after, and on
// a loaded machine the program reads the layout once it has been restored and
// the character is lost ("Write report · 45m !" arrived as "Write report  45m
// !"). A person's keyboard does not change under their fingers.
namespace keyboard {
inline bool onWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}
// The Wayland keyboard, one for the whole run; started by the first call,
// which a suite makes before any window opens (see wayland_keyboard.cpp).
inline QProcess *waylandKeyboardProcess()
{
    static QProcess *process = nullptr;
    if (process)
        return process;
    process = new QProcess;
#ifdef TARNWELL_WAYLAND_KEYBOARD
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(QStringLiteral(TARNWELL_WAYLAND_KEYBOARD));
    while (process->waitForReadyRead(20000) && !process->canReadLine()) { }
    if (process->readLine().trimmed() != "ready")
        process->kill();
#else
    qWarning("this suite has no Wayland keyboard (TARNWELL_WAYLAND_KEYBOARD)");
#endif
    return process;
}
inline bool waylandKeyboard(const QString &command, const QString &argument)
{
    QProcess *process = waylandKeyboardProcess();
    if (process->state() != QProcess::Running)
        return false;
    process->write((command + QLatin1Char(' ') + argument + QLatin1Char('\n')).toUtf8());
    while (!process->canReadLine())
        if (!process->waitForReadyRead(20000))
            return false;
    return process->readLine().trimmed() == "ok";
}
inline bool type(const QString &text)
{
    if (onWayland())
        return waylandKeyboard(QStringLiteral("type"), text);
    return QProcess::execute(QStringLiteral("xdotool"),
                             {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("15"), text}) == 0;
}
// `name` is a key's X name ("Return"), which both tools know.
inline bool key(const QString &name)
{
    if (onWayland())
        return waylandKeyboard(QStringLiteral("key"), name);
    return QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), name}) == 0;
}

// Waits, with events running, until `ready` holds or `timeoutMs` have passed.
inline bool waitUntil(const std::function<bool()> &ready, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!ready()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QTest::qWait(50);
    }
    return true;
}

// The focused text field of the program `pid` holds `text` (read as a
// screen reader reads it).
inline bool focusedFieldHolds(AtSpiTree &reader, qint64 pid, const QString &text)
{
    const AtSpiNode tree = reader.application(pid);
    const AtSpiNode *field = tree.shown([](const AtSpiNode &n) { return n.isField() && n.focused; });
    return field && field->text == text;
}

// Adds a task by typing `line` into the program's focused field, waiting for
// what a person waits for rather than for a fixed time: the field focused and
// empty before typing, the whole line in it before Return, then the row
// `title` shown and the field empty and focused again. Returns what did not
// happen in time; empty on success.
inline QString enterLine(AtSpiTree &reader, qint64 pid, const QString &line, const QString &title, int timeoutMs)
{
    if (!waitUntil([&] { return focusedFieldHolds(reader, pid, QString()); }, timeoutMs))
        return QStringLiteral("no focused empty field before typing \"%1\" in\n%2")
            .arg(line, reader.application(pid).dump());
    if (!type(line))
        return QStringLiteral("the keyboard tool failed");
    if (!waitUntil([&] { return focusedFieldHolds(reader, pid, line); }, timeoutMs))
        return QStringLiteral("the field does not show \"%1\" in\n%2").arg(line, reader.application(pid).dump());
    if (!key(QStringLiteral("Return")))
        return QStringLiteral("the keyboard tool failed");
    const auto listed = [&] {
        return reader.application(pid).shown([&](const AtSpiNode &n) { return n.name == title; }) != nullptr;
    };
    if (!waitUntil([&] { return listed() && focusedFieldHolds(reader, pid, QString()); }, timeoutMs))
        return QStringLiteral("\"%1\" not listed with the field empty again").arg(title);
    return {};
}
} // namespace keyboard

// The store as another reader sees it.
struct StoreReader
{
    explicit StoreReader(const QString &path)
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("reader"));
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        db.open();
    }
    ~StoreReader() { QSqlDatabase::removeDatabase(QStringLiteral("reader")); }
    // Today's tasks as "title|minutes|urgent|completed|running", in queue order.
    QStringList tasks()
    {
        QSqlQuery q(QSqlDatabase::database(QStringLiteral("reader")));
        q.exec(QStringLiteral("SELECT title, duration_minutes, urgent, completed, active_started_at IS NOT NULL "
                              "FROM tasks ORDER BY completed, order_index"));
        QStringList out;
        while (q.next())
            out << QStringLiteral("%1|%2|%3|%4|%5")
                       .arg(q.value(0).toString(), q.value(1).isNull() ? QStringLiteral("-") : q.value(1).toString())
                       .arg(q.value(2).toInt())
                       .arg(q.value(3).toInt())
                       .arg(q.value(4).toInt());
        return out;
    }
};

// Sets columns of the settings row of a stopped program's store, e.g.
// {"theme", "dark"}, {"language", "de"}.
inline bool setSettings(const QString &storePath, const QList<std::pair<QString, QString>> &columns)
{
    bool ok = false;
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("settings-writer"));
        db.setDatabaseName(storePath);
        if (db.open()) {
            QStringList assignments;
            for (const auto &column : columns)
                assignments << QStringLiteral("%1 = '%2'").arg(column.first, column.second);
            ok =
                QSqlQuery(db).exec(QStringLiteral("UPDATE app_settings SET ") + assignments.join(QStringLiteral(", ")));
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("settings-writer"));
    return ok;
}
