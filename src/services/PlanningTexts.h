#pragma once

#include "persistence/RoutineSchedule.h"

#include <QString>

namespace tarnwell {

// The user-facing texts of quick add, the day plan footer, routines and the
// rollover banner, in the installed language. Views take their wording from
// here.
namespace PlanningTexts {

QString quickAddTitleRequired();

QString dayPlanPlanned(const QString &duration);
QString dayPlanFinishPrefix();
QString dayPlanWorkdayEnds(const QString &time);
QString dayPlanWorkdayEnded(const QString &time);
QString dayPlanWorkday(const QString &time);
QString dayPlanSummary(const QString &line);
QString dayPlanOverflowCount(int count);
QString dayPlanUntimed(int count);
QString dayPlanMoveOverflow();
QString dayPlanMoveOverflowShort();

QString routineMenuLoad();
QString routineMenuSaveQueue();
QString routineMenuManage();
QString routineMenuNone();
QString routineMenuTooltip();
QString routineNameField();
QString routineNameFieldPlaceholder();
QString routineDefaultName();

QString toastRoutineLoaded(int count);
QString toastRoutineAlreadyLoaded(const QString &routineName);
QString toastRoutineSaved(const QString &routineName);

QString repeatMenu();
QString repeatOption(RoutineSchedule::Kind kind);

QString rolloverFromYesterday(int count);
QString rolloverFromEarlier(int count);
QString rolloverRollForward();
QString rolloverArchive();
QString rolloverDismiss();

} // namespace PlanningTexts

} // namespace tarnwell
