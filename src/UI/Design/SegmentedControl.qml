pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// One of a few, all in sight.
FocusScope {
    id: root

    required property string label
    required property list<string> titles
    required property list<string> symbols
    required property int current

    signal chosen(index: int)

    implicitWidth: 454
    implicitHeight: 30
    activeFocusOnTab: true

    Accessible.role: Accessible.PageTabList
    Accessible.name: label

    function step(by: int): void {
        const next = Math.max(0, Math.min(titles.length - 1, current + by));
        if (next !== current)
            chosen(next);
    }

    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.well
    }

    FocusRing {
        radius: 10
    }

    Rectangle {
        id: marker

        x: 2 + root.current * width
        y: 2
        width: (root.width - 4) / root.titles.length
        height: root.height - 4
        radius: 6
        color: Theme.raised
        border.width: 1
        border.color: Theme.border

        Behavior on x {
            NumberAnimation {
                duration: 150
                easing.type: Easing.InOutQuad
            }
        }
    }

    Row {
        anchors.fill: parent
        anchors.margins: 2

        Repeater {
            model: root.titles.length

            Pressable {
                id: segment

                required property int index
                readonly property bool isCurrent: index === root.current
                readonly property color foreground: isCurrent ? Theme.text : Theme.secondaryText

                width: marker.width
                height: parent.height
                label: root.titles[index]
                activeFocusOnTab: false
                onClicked: root.chosen(index)

                Accessible.role: Accessible.PageTab
                Accessible.selectable: true
                Accessible.selected: isCurrent

                Row {
                    anchors.centerIn: parent
                    spacing: 7

                    Symbol {
                        anchors.verticalCenter: parent.verticalCenter
                        name: root.symbols[segment.index]
                        size: 13
                        color: segment.isCurrent ? Theme.accentText : Theme.secondaryText
                    }

                    Label {
                        anchors.verticalCenter: parent.verticalCenter
                        text: segment.label
                        font.pixelSize: 12
                        font.weight: segment.isCurrent ? Font.DemiBold : Font.Normal
                        color: segment.foreground
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
