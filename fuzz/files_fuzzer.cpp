// libFuzzer target for the files and links other programs hand the agent:
// widget command files, the widget snapshot (which the widget reads back)
// and tarnwell: links. The first input byte picks the reader; the rest is the
// input. Besides the sanitizers' findings it stops on any broken promise.
#include "integration/AppURLRouter.h"
#include "widget/WidgetCommand.h"
#include "widget/WidgetSnapshot.h"

#include <QUrl>

#include <cstdint>
#include <cstdlib>

using namespace tarnwell;

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const QByteArray input(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    switch (data[0] % 3) {
    case 0:
        // An accepted command writes back to itself and names its own file.
        if (const auto command = WidgetCommand::decode(input)) {
            const auto again = WidgetCommand::decode(command->encode());
            check(again && *again == *command);
            check(command->fileName().endsWith(QLatin1String(".json")) && !command->fileName().contains(u'/'));
        }
        break;
    case 1:
        // An accepted snapshot writes back to itself.
        if (const auto snapshot = WidgetSnapshot::decode(input)) {
            const auto again = WidgetSnapshot::decode(snapshot->encode());
            check(again && *again == *snapshot && again->sameContent(*snapshot));
        }
        break;
    default: {
        // Only our scheme routes, and quick add only for its host.
        const QUrl url(QString::fromUtf8(input), QUrl::StrictMode);
        if (const auto route = AppURLRouter::route(url)) {
            check(url.scheme().compare(QLatin1String("tarnwell"), Qt::CaseInsensitive) == 0);
            check(*route != AppURLRoute::quickAdd ||
                  url.host(QUrl::FullyEncoded).compare(QLatin1String("quickadd"), Qt::CaseInsensitive) == 0);
        }
        break;
    }
    }
    return 0;
}
