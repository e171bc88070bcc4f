#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>
#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace tarnwell {

class ThemeController;

// The one QML engine of the process, made when the first window is needed
// (so that a start without windows does not pay for it).
class UiEngine : public QObject
{
    Q_OBJECT
public:
    explicit UiEngine(ThemeController &theme, QObject *parent = nullptr);
    ~UiEngine() override;

    QQmlEngine &engine();
    bool hasEngine() const { return bool(m_engine); }
    // Creates a window from a file of the Tarnwell.Views module with the
    // given context objects; the caller owns the window.
    QQuickWindow *createWindow(const QString &file, const QVariantMap &properties = {});
    // Re-reads every translated text of the open windows.
    void retranslate();

private:
    ThemeController &m_theme;
    std::unique_ptr<QQmlEngine> m_engine;
};

} // namespace tarnwell
