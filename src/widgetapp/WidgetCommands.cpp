#include "WidgetCommands.h"

#include "WidgetProgramTexts.h"
#include "widget/WidgetCommandStore.h"

namespace tarnwell::widgetapp {

QString sendCommand(WidgetCommand::Action action, const std::optional<WidgetSnapshot> &snapshot, const QDateTime &now)
{
    if (!snapshot || !snapshot->anchor)
        return WidgetProgramTexts::noTaskInHand();
    QString error;
    if (!WidgetCommandStore().write(WidgetCommand::make(action, snapshot->anchor->id, now), &error))
        return WidgetProgramTexts::commandFailed(error);
    return {};
}

} // namespace tarnwell::widgetapp
