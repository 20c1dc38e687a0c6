pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// The open list of a picker: fills the window, so that a press elsewhere closes it, and lies over its owner.
FocusScope {
    id: root

    required property Item owner
    required property string label
    required property list<string> titles
    required property list<string> descriptions
    required property list<string> symbols
    required property int current

    readonly property bool isDescribed: descriptions.length > 0
    // Its own, or the mark of the current one.
    readonly property bool hasSymbols: symbols.length > 0 || current >= 0
    readonly property real rowHeight: isDescribed ? 44 : 28

    signal chosen(index: int)
    signal dismissed

    // Below the owner where there is room, else above, else where it fits.
    function place(): void {
        const corner = owner.mapToItem(root, 0, 0);
        const below = corner.y + owner.height + 4;
        const above = corner.y - ground.height - 4;
        ground.x = Math.max(8, Math.min(width - ground.width - 8, corner.x));
        if (below + ground.height <= height - 8)
            ground.y = below;
        else
            ground.y = Math.max(8, above >= 8 ? above : height - 8 - ground.height);
    }

    Component.onCompleted: {
        place();
        list.currentIndex = Math.max(0, current);
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
        list.forceActiveFocus();
    }
    onWidthChanged: place()
    onHeightChanged: place()

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: root.dismissed()
        onWheel: root.dismissed()
    }

    Rectangle {
        id: ground

        width: Math.min(root.width - 16, Math.max(root.owner.width, root.isDescribed ? 420 : 0))
        height: Math.min(root.height - 16, list.contentHeight + 10)
        radius: 8
        color: Theme.sheet
        border.width: 1
        border.color: Theme.fieldBorder

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: 5
            model: root.titles.length
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            keyNavigationWraps: true

            Keys.onReturnPressed: root.chosen(currentIndex)
            Keys.onEnterPressed: root.chosen(currentIndex)
            Keys.onSpacePressed: root.chosen(currentIndex)
            Keys.onEscapePressed: root.dismissed()
            Keys.onTabPressed: root.dismissed()
            Keys.onBacktabPressed: root.dismissed()

            Accessible.role: Accessible.List
            Accessible.name: root.label

            delegate: Rectangle {
                id: row

                required property int index
                readonly property bool isCurrent: index === list.currentIndex
                readonly property color foreground: isCurrent ? Theme.onAccent : Theme.text

                width: list.width
                height: root.rowHeight
                radius: 5
                color: isCurrent ? Theme.accent : "transparent"

                Accessible.role: Accessible.ListItem
                Accessible.name: root.titles[index]
                Accessible.description: root.isDescribed ? root.descriptions[index] : ""
                Accessible.focusable: true
                Accessible.onPressAction: root.chosen(index)

                Symbol {
                    id: symbol

                    anchors.left: parent.left
                    anchors.leftMargin: 9
                    anchors.verticalCenter: parent.verticalCenter
                    visible: name !== ""
                    name: {
                        if (root.symbols.length > 0)
                            return root.symbols[row.index];
                        return row.index === root.current ? "checkmark" : "";
                    }
                    size: root.isDescribed ? 17 : 13
                    color: row.foreground
                }

                Column {
                    anchors.left: parent.left
                    anchors.leftMargin: root.hasSymbols ? root.isDescribed ? 37 : 29 : 11
                    anchors.right: parent.right
                    anchors.rightMargin: 9
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 1

                    Label {
                        width: parent.width
                        text: root.titles[row.index]
                        color: row.foreground
                        font.weight: root.isDescribed ? Font.Medium : Font.Normal
                        Accessible.ignored: true
                    }

                    Label {
                        width: parent.width
                        visible: root.isDescribed
                        text: root.isDescribed ? root.descriptions[row.index] : ""
                        color: row.isCurrent ? Theme.onAccent : Theme.secondaryText
                        font.pixelSize: 11
                        Accessible.ignored: true
                    }
                }

                MouseArea {
                    anchors.fill: parent
                    hoverEnabled: true
                    onPositionChanged: list.currentIndex = row.index
                    onClicked: root.chosen(row.index)
                }
            }
        }

        ScrollBar {
            view: list
        }
    }
}
