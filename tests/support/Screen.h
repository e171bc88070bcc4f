// What is on screen, in either session the tests run in: under Xvfb (X11,
// read with xdotool and grabbed through the X server) or under the headless
// Wayland compositor (sway: its window tree read with swaymsg, pictures taken
// with grim). The program's windows are found by what the desktop knows of
// them, never through the program itself.
#pragma once

#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QProcess>
#include <QRect>
#include <QScreen>

namespace screen {

inline bool isWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// The standard output of a helper program; empty when it failed.
inline QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(20000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return process.readAllStandardOutput();
}

namespace detail {

// The visible views of sway's tree (tiled and floating) that belong to `pid`,
// each with the content's place on the output.
inline void swayViews(const QJsonObject &node, qint64 pid, QList<QRect> &out)
{
    if (node.value(QStringLiteral("pid")).toInteger() == pid && node.value(QStringLiteral("visible")).toBool()) {
        const QJsonObject rect = node.value(QStringLiteral("rect")).toObject();
        const QJsonObject content = node.value(QStringLiteral("window_rect")).toObject();
        out << QRect(rect.value(QStringLiteral("x")).toInt() + content.value(QStringLiteral("x")).toInt(),
                     rect.value(QStringLiteral("y")).toInt() + content.value(QStringLiteral("y")).toInt(),
                     content.value(QStringLiteral("width")).toInt(), content.value(QStringLiteral("height")).toInt());
    }
    for (const QString &key : {QStringLiteral("nodes"), QStringLiteral("floating_nodes")})
        for (const auto &child : node.value(key).toArray())
            swayViews(child.toObject(), pid, out);
}

} // namespace detail

// Where the one visible top-level window of the program `pid` is on screen
// (the last mapped where there are several); null when none is shown. Under
// X11 the window is found by its class, "tarnwell".
inline QRect windowOf(qint64 pid)
{
    if (isWayland()) {
        QList<QRect> views;
        detail::swayViews(QJsonDocument::fromJson(
                              output(QStringLiteral("swaymsg"),
                                     {QStringLiteral("--raw"), QStringLiteral("--type"), QStringLiteral("get_tree")}))
                              .object(),
                          pid, views);
        return views.isEmpty() ? QRect() : views.last();
    }
    const auto ids = QString::fromUtf8(output(QStringLiteral("xdotool"),
                                              {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                               QStringLiteral("--classname"), QStringLiteral("tarnwell")}))
                         .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (ids.isEmpty())
        return {};
    QHash<QString, int> values;
    const QString shell = QString::fromUtf8(output(
        QStringLiteral("xdotool"), {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), ids.last()}));
    for (const QString &line : shell.split(QLatin1Char('\n')))
        values.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1).toInt());
    return QRect(values.value(QStringLiteral("X")), values.value(QStringLiteral("Y")),
                 values.value(QStringLiteral("WIDTH")), values.value(QStringLiteral("HEIGHT")));
}

// The size of the (first) output or X screen.
inline QSize size()
{
    if (isWayland()) {
        const QJsonArray outputs = QJsonDocument::fromJson(output(QStringLiteral("swaymsg"),
                                                                  {QStringLiteral("--raw"), QStringLiteral("--type"),
                                                                   QStringLiteral("get_outputs")}))
                                       .array();
        const QJsonObject rect = outputs.first().toObject().value(QStringLiteral("rect")).toObject();
        return {rect.value(QStringLiteral("width")).toInt(), rect.value(QStringLiteral("height")).toInt()};
    }
    return QGuiApplication::primaryScreen()->size();
}

// What the screen shows in `area` (the whole screen when null), as a person
// sees it: through the compositor on Wayland, from the X server otherwise.
inline QImage grab(const QRect &area = {})
{
    QImage image;
    if (isWayland()) {
        QStringList arguments;
        if (area.isValid())
            arguments << QStringLiteral("-g")
                      << QStringLiteral("%1,%2 %3x%4").arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height());
        image.loadFromData(output(QStringLiteral("grim"),
                                  arguments << QStringLiteral("-t") << QStringLiteral("ppm") << QStringLiteral("-")));
    } else {
        const QPixmap all = QGuiApplication::primaryScreen()->grabWindow(0);
        image = (area.isValid() ? all.copy(area) : all).toImage();
    }
    return image.isNull() ? image : image.convertToFormat(QImage::Format_RGB32);
}

} // namespace screen
