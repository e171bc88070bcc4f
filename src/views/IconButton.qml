import QtQuick
import Tarnwell.Views

// A square button that shows only one of our icons; `hint` is its tooltip
// and its name for screen readers.
ActionButton {
    kind: "flat"
}
