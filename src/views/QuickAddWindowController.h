#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;

namespace tarnwell {

class NamedNotifications;
class QuickAddDraft;
class UiEngine;

// The floating quick-add window: one line with chips for what it will add,
// a day picker, Enter adds, Escape closes.
class QuickAddWindowController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
public:
    QuickAddWindowController(QuickAddDraft &draft, UiEngine &ui, QObject *parent = nullptr);
    ~QuickAddWindowController() override;

    QuickAddDraft &draft() const { return m_draft; }
    QQuickWindow *window() const;

    // The "quickAdd" hot key shows the window, focused and ready to type.
    void observeHotkeys(NamedNotifications &center);

    void show();
    Q_INVOKABLE void hide();
    bool isVisible() const;

Q_SIGNALS:
    void shown();

private:
    QuickAddDraft &m_draft;
    UiEngine &m_ui;
    QPointer<QQuickWindow> m_window;
};

} // namespace tarnwell
