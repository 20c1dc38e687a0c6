import QtQuick
import Tavrin

// How much of something is done.
Item {
    id: root

    // What a screen reader calls it.
    required property string label
    // 0 to 1.
    required property real value
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1

    implicitWidth: 160
    implicitHeight: 6

    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.switchOff
    }

    Rectangle {
        width: parent.width * Math.max(0, Math.min(1, root.value))
        height: parent.height
        // A bar narrower than its ends are round would stand out of them.
        radius: Math.min(width, height) / 2
        color: Theme.accent
    }
}
