import QtQuick
import Tavrin

// What can be pressed, by pointer, by key and by a screen reader; without a look of its own.
FocusScope {
    id: root

    // What a screen reader says.
    required property string label
    property string toolTip
    readonly property bool isHovered: pointer.hovered
    readonly property bool isPressed: area.pressed

    signal clicked

    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.description: toolTip
    Accessible.focusable: true
    // A screen reader also finds what a sheet covers.
    Accessible.onPressAction: {
        if (enabled)
            clicked();
    }

    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    HoverHandler {
        id: pointer

        cursorShape: Qt.PointingHandCursor
        onHoveredChanged: {
            if (hovered)
                ToolTip.enter(root, root.toolTip);
            else
                ToolTip.leave(root);
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onPressed: ToolTip.leave(root)
        onClicked: root.clicked()
    }
}
