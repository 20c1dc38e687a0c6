import QtQuick
import Tavrin

// A column that scrolls where it is taller than its place; also by the keys, while it has them.
// What gets them is brought into sight.
FocusScope {
    id: root

    property real padding: 20
    property real verticalPadding: padding
    property real spacing: 16
    // What does not fill the page stands in its middle, yet no lower than this.
    property real lowestTop: 0
    default property alias parts: column.data

    // Follows a key that scrolls; for what has the keyboard in the page's stead, too.
    function scroll(event: KeyEvent): void {
        const page = view.height - 40;
        switch (event.key) {
        case Qt.Key_Up:
            scrollBy(-40);
            break;
        case Qt.Key_Down:
            scrollBy(40);
            break;
        case Qt.Key_PageUp:
            scrollBy(-page);
            break;
        case Qt.Key_PageDown:
        case Qt.Key_Space:
            scrollBy(page);
            break;
        case Qt.Key_Home:
            scrollBy(-view.contentHeight);
            break;
        case Qt.Key_End:
            scrollBy(view.contentHeight);
            break;
        default:
            return;
        }
        event.accepted = true;
    }

    function scrollBy(points: real): void {
        const last = Math.max(0, view.contentHeight - view.height);
        view.contentY = Math.max(0, Math.min(last, view.contentY + points));
    }

    Keys.onPressed: event => scroll(event)

    Flickable {
        id: view

        anchors.fill: parent
        contentHeight: column.height + 2 * root.verticalPadding
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        focus: true

        // Itself no stop of that key, it would send it to the first one of the window.
        Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

        Column {
            id: column

            x: root.padding
            y: Math.max(root.verticalPadding, Math.min(root.lowestTop, (view.height - height) / 2))
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
