// libFuzzer target for what other programs hand in: the import reader and the
// argument checks of the bus and the command line. The first input byte picks
// the check; the rest is the input. Besides the sanitizers' findings it stops
// on any broken promise of an accepted value.
#include "integration/AutomationArguments.h"
#include "integration/TaskExchange.h"
#include "persistence/TaskRepository.h"

#include <QSet>

#include <cstdint>
#include <cstdlib>

using namespace tarnwell;

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

void checkDocument(const TaskExchange::Document &document)
{
    QSet<QUuid> ids;
    QSet<QDate> dates;
    const auto fresh = [&ids](const QUuid &id) {
        check(!id.isNull() && !ids.contains(id));
        ids.insert(id);
    };
    for (const auto &day : document.days) {
        fresh(day.id);
        check(day.date.isValid() && !dates.contains(day.date));
        dates.insert(day.date);
        for (const auto &task : day.tasks) {
            fresh(task.id);
            check(!task.title.isEmpty() && task.title == task.title.trimmed());
            check(TaskRepository::characterCount(task.title) <= TaskRepository::Limits::titleCharacters);
            if (task.durationMinutes)
                check(*task.durationMinutes >= 1 && *task.durationMinutes <= 9999);
            check(task.createdAt.isValid() && task.updatedAt.isValid());
        }
    }
    for (const auto &routine : document.routines) {
        fresh(routine.id);
        check(routine.repeatWeekdays >= 0 && routine.repeatWeekdays <= 127);
        for (const auto &item : routine.items)
            fresh(item.id);
    }
}

} // namespace

// Without string tables, the texts are their ids and Qt warns about their
// missing arguments; those warnings would only slow the run down.
extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    const QString text = QString::fromUtf8(bytes);
    try {
        switch (data[0] % 6) {
        case 0:
            checkDocument(TaskExchange::read(bytes));
            break;
        case 1: {
            const QString accepted = AutomationArguments::text(text, QStringLiteral("title"));
            check(accepted.size() <= AutomationArguments::Limits::textUnits && !accepted.contains(QChar(u'\0')));
            break;
        }
        case 2:
            if (const auto day = AutomationArguments::day(text))
                check(day->isValid() && text.size() == 10 && day->toString(Qt::ISODate) == text);
            else
                check(text.isEmpty());
            break;
        case 3:
            if (const auto id = AutomationArguments::taskId(text))
                check(!id->isNull() && QUuid::fromString(text) == *id);
            else
                check(text.isEmpty());
            break;
        case 4: {
            const auto format = AutomationArguments::exportFormat(text);
            check(text ==
                  QLatin1String(format == AutomationArguments::ExportFormat::json      ? "json"
                                    : format == AutomationArguments::ExportFormat::csv ? "csv"
                                                                                       : "ics"));
            break;
        }
        case 5: {
            const qint64 value = text.toLongLong();
            const auto minutes = AutomationArguments::plannedMinutes(value);
            check(minutes ? (*minutes >= 1 && *minutes <= 9999 && *minutes == value) : value <= 0);
            break;
        }
        }
    } catch (const ArgumentError &error) {
        check(!error.message().isEmpty());
    } catch (const ImportError &error) {
        check(!error.message().isEmpty());
    }
    return 0;
}
