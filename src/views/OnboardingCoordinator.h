#pragma once

#include <QObject>
#include <QPointer>

class QQuickWindow;

namespace tarnwell {

class AppSettingsStore;
class UiEngine;

// The first-run window: a few pages on the task in hand, quick add, the hot
// keys and the tray. Finishing it records onboardingCompleted.
class OnboardingCoordinator : public QObject
{
    Q_OBJECT
public:
    OnboardingCoordinator(AppSettingsStore &settings, UiEngine &ui, QObject *parent = nullptr);
    ~OnboardingCoordinator() override;

    void show();
    bool isShowing() const { return !m_window.isNull(); }
    Q_INVOKABLE void finish();

Q_SIGNALS:
    void finished();

private:
    AppSettingsStore &m_settings;
    UiEngine &m_ui;
    QPointer<QQuickWindow> m_window;
};

} // namespace tarnwell
