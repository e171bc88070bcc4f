#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;

namespace tarnwell {

class AppSettingsStore;
class UiEngine;

// The first-run window: a few pages on the task in hand, quick add, the hot
// keys and the tray. Finishing it, or closing its window, records
// onboardingCompleted and installs the interface.
class OnboardingCoordinator : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    OnboardingCoordinator(AppSettingsStore &settings, UiEngine &ui, QObject *parent = nullptr);
    ~OnboardingCoordinator() override;

    void show();
    bool isShowing() const { return !m_window.isNull(); }
    Q_INVOKABLE void finish();

Q_SIGNALS:
    void finished();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    AppSettingsStore &m_settings;
    UiEngine &m_ui;
    QPointer<QQuickWindow> m_window;
    bool m_finished = false;
};

} // namespace tarnwell
