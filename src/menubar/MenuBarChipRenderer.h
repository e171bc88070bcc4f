#pragma once

#include "MenuBarPresentation.h"

#include <QColor>
#include <QImage>
#include <QList>

namespace tarnwell {

// Sizes of the status icon: a ring whose arc is the share of the plan used,
// with a filled centre while the timer runs.
struct MenuBarChipMetrics
{
    static constexpr int logicalSize = 22;
    static constexpr int sizes[] = {22, 44}; // normal and double density
    static constexpr double ringWidth = 2.5; // at the logical size
    static constexpr double centreRadius = 3.5;
    // Steps of the progress arc: the icon changes at most this often per plan.
    static constexpr int progressSteps = 48;
};

// The colour of each state in the light and dark panel palettes.
struct MenuBarChipPalette
{
    QColor track;
    QColor idle;
    QColor noDuration;
    QColor tracking;
    QColor overdue;
    QColor dayDone;

    static MenuBarChipPalette light();
    static MenuBarChipPalette dark();
    QColor colour(MenuBarPresentation::State state) const;
};

// Draws the status icon for a presentation; the label text is the panel's.
class MenuBarChipRenderer
{
public:
    // What the icon depends on; equal keys draw equal icons.
    struct Key
    {
        MenuBarPresentation::State state = MenuBarPresentation::State::idle;
        int progressStep = -1; // -1: no arc
        bool running = false;
        bool dark = false;
        friend bool operator==(const Key &, const Key &) = default;
    };

    static Key keyFor(const MenuBarPresentation &presentation, bool dark);
    static QImage render(const Key &key, int size);
    static QList<QImage> renderAllSizes(const Key &key);
};

} // namespace tarnwell
