#pragma once

#include <QDate>
#include <QString>

namespace tarnwell {

// Texts shared by the popover and the quick-add window, in the installed
// language.
namespace ViewTexts {

QString today();
QString tomorrow();
QString yesterday();
// "Today", "Tomorrow", "Yesterday" (counted from `today`), else the
// weekday's name.
QString dayTitle(QDate date, QDate today);
// The whole date in the effective language, weekday included.
QString dayDate(QDate date);
// "Today", "Tomorrow" or the weekday name: the day chips of quick add.
QString dayChip(int offset, QDate today);

// "+10 min": the extend chip of the task card.
QString extendChip(int minutes);
QString extendTooltip(int minutes);
QString undo();
QString movedToTomorrow(const QString &title);
QString movedOverflow(int count);
QString deleted(const QString &title);

} // namespace ViewTexts
} // namespace tarnwell
