// libFuzzer target for what a CalDAV server hands the sync: WebDAV answers
// read as they arrive, to-do resources that any client may have written (read
// and written back through libical) and the per-field merge of two changed
// copies. The first input byte picks
// the check. Besides the sanitizers' findings it stops on any broken promise;
// a mapping that does not come back to itself would make two machines rewrite
// the same to-do on every sync.
#include "ical/VTodoMapping.h"
#include "sync/DavMultistatus.h"
#include "sync/TodoMerge.h"

#include <QDateTime>

#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace tarnwell;

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

const QDateTime now(QDate(2026, 11, 24), QTime(9, 30), Qt::UTC);

// Reads fixed-size fields off the input, zero once it runs out.
struct Bytes
{
    const uint8_t *data;
    size_t size;
    template<typename T>
    T take()
    {
        T value{};
        const size_t n = std::min(sizeof(T), size);
        std::memcpy(&value, data, n);
        data += n;
        size -= n;
        return value;
    }
};

TodoFields fieldsFrom(Bytes &in)
{
    TodoFields f;
    const auto flags = in.take<uint8_t>();
    f.uid = QStringLiteral("fuzz-uid");
    f.title = QString::number(in.take<uint8_t>() % 4);
    f.notes = (flags & 1) ? QStringLiteral("notes") : QString();
    f.day = QDate(2026, 11, 1).addDays(in.take<uint8_t>() % 8);
    f.urgent = flags & 2;
    if (flags & 4)
        f.plannedMinutes = in.take<uint8_t>() + 1;
    f.completed = flags & 8;
    if (f.completed && (flags & 16))
        f.completedAt = now.addSecs(-in.take<uint8_t>());
    f.cancelled = !f.completed && (flags & 32);
    if (flags & 64)
        f.order = in.take<uint8_t>() % 5;
    f.focusedSeconds = in.take<uint16_t>();
    f.discardedSeconds = in.take<uint8_t>();
    if (flags & 128)
        f.lastModified = now.addSecs(-int(in.take<uint8_t>()));
    return f;
}

void mappingComesBack(const QByteArray &ics)
{
    const auto read = VTodoMapping::read(ics);
    if (!read)
        return;
    // Written over the copy it came from and read again, a to-do is what it
    // was; what the write fills in (edit time, completion time) is now.
    const QByteArray written = VTodoMapping::write(*read, now, ics);
    const auto again = VTodoMapping::read(written);
    check(again.has_value());
    TodoFields expected = *read;
    expected.lastModified = read->lastModified.value_or(now);
    expected.completedAt =
        read->completed ? std::optional(read->completedAt.value_or(now)) : std::optional<QDateTime>();
    check(*again == expected);
    // A second write changes nothing more.
    check(VTodoMapping::read(VTodoMapping::write(*again, now, written)) == again);
}

void mergeKeepsItsPromises(Bytes in)
{
    const auto hasBase = in.take<uint8_t>() & 1;
    const TodoFields base = fieldsFrom(in);
    const TodoFields local = fieldsFrom(in);
    const TodoFields remote = fieldsFrom(in);
    const QDateTime localEdited = now.addSecs(-int(in.take<uint8_t>()));
    const std::optional<TodoFields> shared = hasBase ? std::optional(base) : std::nullopt;
    const TodoFields merged = sync::mergeTodo(shared, local, localEdited, remote);

    // Measured time never goes backwards.
    check(merged.focusedSeconds >= std::max(local.focusedSeconds, remote.focusedSeconds));
    check(merged.discardedSeconds >= std::max(local.discardedSeconds, remote.discardedSeconds));
    // A completion is undone only by a copy that itself changed it.
    const auto unchanged = [&](const TodoFields &side) { return shared && side.completed == shared->completed; };
    check(!(local.completed && unchanged(remote)) || merged.completed);
    check(!(remote.completed && unchanged(local)) || merged.completed);
    if (!shared)
        check(merged.completed == (local.completed || remote.completed));
    // Every field comes from one of the two copies.
    check(merged.title == local.title || merged.title == remote.title);
    check(merged.day == local.day || merged.day == remote.day);
    check(merged.order == local.order || merged.order == remote.order);
    // Two copies that agree merge to themselves.
    TodoFields same = sync::mergeTodo(shared, local, localEdited, local);
    same.lastModified = local.lastModified;
    check(same == local);
}

bool same(const sync::DavMultistatus &a, const sync::DavMultistatus &b)
{
    if (a.error != b.error || a.syncToken != b.syncToken || a.responses.size() != b.responses.size())
        return false;
    for (qsizetype i = 0; i < a.responses.size(); ++i) {
        const auto &x = a.responses[i], &y = b.responses[i];
        if (x.href != y.href || x.status != y.status || x.props.keys() != y.props.keys())
            return false;
        for (auto it = x.props.cbegin(); it != x.props.cend(); ++it) {
            const auto &v = y.props[it.key()];
            if (it->text != v.text || it->hrefs != v.hrefs || it->children != v.children ||
                it->components != v.components)
                return false;
        }
    }
    return true;
}

// An answer that reads well in one piece reads the same in pieces of any
// size, however the network cuts it; cut short, it is an error (or, cut only
// after its root element ended, the same answer). (The other way round a reading may differ: in one piece, Qt finds
// badly encoded bytes after the end of the answer, in pieces it stops there.)
void answerReadsTheSameInPieces(Bytes in)
{
    const size_t piece = in.take<uint8_t>() % 16 + 1;
    const size_t cut = in.take<uint16_t>();
    const QByteArray body(reinterpret_cast<const char *>(in.data), qsizetype(in.size));
    const sync::DavMultistatus whole = sync::DavMultistatus::parse(body);

    sync::DavMultistatus pieces;
    sync::DavMultistatusReader reader([&](sync::DavResponse &&r) { pieces.responses.append(std::move(r)); });
    for (qsizetype at = 0; at < body.size(); at += qsizetype(piece)) {
        reader.addData(body.mid(at, qsizetype(piece)));
        while (reader.read(std::chrono::microseconds(0)) == sync::DavMultistatusReader::Progress::paused) { }
    }
    reader.close();
    while (reader.read() == sync::DavMultistatusReader::Progress::paused) { }
    pieces.syncToken = reader.syncToken();
    pieces.error = reader.error();
    if (!whole.error.isEmpty())
        return;
    check(same(whole, pieces));
    if (cut < size_t(body.size())) {
        const sync::DavMultistatus shorter = sync::DavMultistatus::parse(body.left(qsizetype(cut)));
        check(!shorter.error.isEmpty() || same(shorter, whole));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    switch (data[0] % 3) {
    case 0:
        mappingComesBack(QByteArray(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1)));
        break;
    case 1:
        mergeKeepsItsPromises(Bytes{data + 1, size - 1});
        break;
    default:
        answerReadsTheSameInPieces(Bytes{data + 1, size - 1});
        break;
    }
    return 0;
}
