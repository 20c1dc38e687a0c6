import QtQuick
import Tavrin

// A form that may be taller than its place: it scrolls, and brings the control that gets the keyboard into
// sight.
Item {
    id: root

    default property alias parts: column.data
    readonly property real margin: 20

    Flickable {
        id: view

        anchors.fill: parent
        contentWidth: width
        contentHeight: column.height + 32
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: column

            x: root.margin
            y: 16
            width: view.width - 2 * root.margin
            spacing: 12
        }
    }

    ScrollBar {
        view: view
    }

    FocusReveal {
        view: view
    }
}
