import QtQuick
import Tavrin

// A column that scrolls where it is taller than its place; also by the keys, while it has them.
// What gets them is brought into sight.
FocusScope {
    id: root

    property real padding: 20
    property real spacing: 16
    // What does not fill the page stands in its middle.
    property bool isCentered: false
    default property alias parts: column.data

    Flickable {
        id: view

        anchors.fill: parent
        contentHeight: column.height + 2 * root.padding
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        focus: true

        function scrollBy(points: real): void {
            contentY = Math.max(0, Math.min(Math.max(0, contentHeight - height), contentY + points));
        }

        Keys.onUpPressed: scrollBy(-40)
        Keys.onDownPressed: scrollBy(40)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Space)
                scrollBy(height - 40);
            else if (event.key === Qt.Key_PageUp)
                scrollBy(40 - height);
            else if (event.key === Qt.Key_Home)
                scrollBy(-contentHeight);
            else if (event.key === Qt.Key_End)
                scrollBy(contentHeight);
            else
                return;
            event.accepted = true;
        }

        Column {
            id: column

            x: root.padding
            y: Math.max(root.padding, root.isCentered ? (view.height - height) / 2 : 0)
            width: view.width - 2 * root.padding
            spacing: root.spacing
        }
    }

    ScrollBar {
        view: view
    }

    FocusReveal {
        view: view
    }
}
