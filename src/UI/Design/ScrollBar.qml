import QtQuick
import Tavrin

// Where a view stands in what it shows; it can be dragged. Lies at the view's right edge.
Item {
    id: root

    required property Flickable view

    readonly property real visibleShare: view.visibleArea.heightRatio
    readonly property real travel: height - thumb.height

    anchors.top: view.top
    anchors.bottom: view.bottom
    anchors.right: view.right
    anchors.topMargin: 2
    anchors.bottomMargin: 2
    width: 11
    visible: visibleShare < 1

    HoverHandler {
        id: pointer
    }

    Rectangle {
        id: thumb

        anchors.right: parent.right
        anchors.rightMargin: 2
        y: root.travel * Math.max(0, Math.min(1, root.view.visibleArea.yPosition / (1 - root.visibleShare)))
        width: pointer.hovered || drag.pressed ? 7 : 5
        height: Math.max(28, root.height * root.visibleShare)
        radius: width / 2
        color: Theme.secondaryText
        opacity: pointer.hovered || drag.pressed ? 0.7 : 0.35
    }

    MouseArea {
        id: drag

        property real grip: 0

        anchors.fill: parent
        preventStealing: true

        function move(y: real): void {
            const range = root.view.contentHeight + root.view.topMargin + root.view.bottomMargin - root.view.height;
            const share = Math.max(0, Math.min(1, (y - grip) / root.travel));
            root.view.contentY = root.view.originY - root.view.topMargin + share * range;
        }

        onPressed: mouse => {
            const isOnThumb = mouse.y >= thumb.y && mouse.y <= thumb.y + thumb.height;
            grip = isOnThumb ? mouse.y - thumb.y : thumb.height / 2;
            move(mouse.y);
        }
        onPositionChanged: mouse => move(mouse.y)
    }
}
