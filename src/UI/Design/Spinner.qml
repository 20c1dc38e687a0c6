pragma ComponentBehavior: Bound

import QtQuick
import Tavrin

// Something is under way, and nobody knows for how long. Turns only while it can be seen.
Item {
    id: root

    property real size: 22

    property int step: 0
    readonly property int dots: 8

    implicitWidth: size
    implicitHeight: size

    // The text beside it says what is under way.
    Accessible.ignored: true

    Timer {
        interval: 100
        repeat: true
        running: root.visible
        onTriggered: root.step = (root.step + 1) % root.dots
    }

    Repeater {
        model: root.dots

        Rectangle {
            required property int index
            readonly property real angle: 2 * Math.PI * index / root.dots

            x: (root.size - width) / 2 * (1 + Math.sin(angle))
            y: (root.size - height) / 2 * (1 - Math.cos(angle))
            width: root.size / 5
            height: width
            radius: width / 2
            color: Theme.secondaryText
            // The dot that is now at the front is the darkest, and those behind it fade.
            opacity: 1 - 0.11 * ((root.step - index + root.dots) % root.dots)
        }
    }
}
