// Two machines edited the same task while apart: one copy, field by field.
#include "sync/TodoMerge.h"

#include <QTest>

using namespace tarnwell;
using namespace tarnwell::sync;

namespace {

const QDateTime t0 = QDateTime(QDate(2026, 11, 24), QTime(9, 0), Qt::UTC);

TodoFields baseTask()
{
    TodoFields f;
    f.uid = QStringLiteral("A");
    f.title = QStringLiteral("Write the report");
    f.day = QDate(2026, 11, 24);
    f.plannedMinutes = 30;
    f.order = 1;
    f.focusedSeconds = 600;
    f.lastModified = t0;
    return f;
}

} // namespace

class TodoMergeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFieldFromTheSideThatChangedIt()
    {
        const TodoFields base = baseTask();
        TodoFields local = base;
        local.title = QStringLiteral("Write the final report");
        local.focusedSeconds = 900; // the timer ran here
        TodoFields remote = base;
        remote.plannedMinutes = 45;
        remote.urgent = true;
        remote.focusedSeconds = 700; // and there, less
        remote.lastModified = t0.addSecs(600); // later than the local edit, but on other fields

        const TodoFields merged = mergeTodo(base, local, t0.addSecs(300), remote);
        QCOMPARE(merged.title, QStringLiteral("Write the final report"));
        QCOMPARE(merged.plannedMinutes, 45);
        QVERIFY(merged.urgent);
        QCOMPARE(merged.focusedSeconds, 900); // never backwards
        QCOMPARE(merged.order, 1);
    }

    void bothChangedOneFieldTheLaterEditWins()
    {
        const TodoFields base = baseTask();
        TodoFields local = base;
        local.day = QDate(2026, 11, 25);
        TodoFields remote = base;
        remote.day = QDate(2026, 11, 26);
        remote.lastModified = t0.addSecs(600);
        QCOMPARE(mergeTodo(base, local, t0.addSecs(300), remote).day, QDate(2026, 11, 26));
        QCOMPARE(mergeTodo(base, local, t0.addSecs(900), remote).day, QDate(2026, 11, 25));
    }

    void aCompletionIsNotUndoneByAStaleCopy()
    {
        const TodoFields base = baseTask();
        TodoFields local = base;
        local.completed = true;
        local.completedAt = t0.addSecs(100);
        TodoFields stale = base; // edited later, but never saw the completion
        stale.notes = QStringLiteral("bring the figures");
        stale.lastModified = t0.addSecs(900);
        const TodoFields merged = mergeTodo(base, local, t0.addSecs(100), stale);
        QVERIFY(merged.completed);
        QCOMPARE(merged.completedAt, t0.addSecs(100));
        QCOMPARE(merged.notes, QStringLiteral("bring the figures"));

        // Reopened on purpose over there, after the completion here: reopened.
        TodoFields reopened = local;
        reopened.completed = false;
        reopened.completedAt.reset();
        reopened.lastModified = t0.addSecs(900);
        QVERIFY(!mergeTodo(local, local, t0.addSecs(100), reopened).completed);

        // Met for the first time: done on either side is done.
        QVERIFY(mergeTodo(std::nullopt, base, t0, local).completed);
        QVERIFY(mergeTodo(std::nullopt, local, t0.addSecs(999), base).completed);
    }
};

QTEST_GUILESS_MAIN(TodoMergeTest)
#include "tst_todo_merge.moc"
