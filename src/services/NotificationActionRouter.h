#pragma once

#include "NotificationCenter.h"

#include <QObject>

namespace tarnwell {

class ActiveTaskService;
class CompletionPresenter;
class SoundService;

// Carries out the user's choice on a notification: "DONE" completes the task
// (and shows the next-up screen), "PLUS_TEN" extends its plan by the overtime
// preset, anything else (a click on the notification) asks for the popover.
class NotificationActionRouter : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        // The in-process request the popover's owner answers.
        static constexpr const char *popoverOpenRequested = "Tarnwell.popover.openRequested";
        static constexpr const char *reasonNextUp = "nextUp";
        static constexpr const char *reasonDefault = "default";
    };

    NotificationActionRouter(NotificationCenter &center, ActiveTaskService &activeTaskService,
                             SoundService &soundService, CompletionPresenter &presenter, QObject *parent = nullptr);

    void handle(const NotificationResponse &response);

Q_SIGNALS:
    // "Tarnwell.popover.openRequested": `reason` is "nextUp" or "default";
    // `activationToken` lets the popover take the focus where the desktop
    // asks for one.
    void popoverOpenRequested(const QString &reason, const QByteArray &activationToken);

private:
    ActiveTaskService &m_activeTasks;
    SoundService &m_sounds;
    CompletionPresenter &m_presenter;
};

} // namespace tarnwell
