#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;

namespace tarnwell {

class RoutineRepository;
class RoutinesModel;
class UiEngine;

// The routines window: the list of routines on one side, the chosen one's
// name, repeat rule and task templates on the other. Escape closes it. It
// will become the Routines tab of the settings window.
class RoutinesWindowController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    RoutinesWindowController(RoutineRepository &routines, UiEngine &ui, QObject *parent = nullptr);
    ~RoutinesWindowController() override;

    // The window's model, made at the first show; none before.
    RoutinesModel *model() const { return m_model; }
    QQuickWindow *window() const;

    void show();
    Q_INVOKABLE void hide();
    bool isVisible() const;
    void retranslate();

Q_SIGNALS:
    void shown();

private:
    RoutineRepository &m_routines;
    RoutinesModel *m_model = nullptr;
    UiEngine &m_ui;
    QPointer<QQuickWindow> m_window;
};

} // namespace tarnwell
