import QtQuick
import Tavrin

// On or off. It shows what it is told: flipping it asks for the other state.
Pressable {
    id: root

    required property bool isOn

    signal flipped(isOn: bool)

    implicitWidth: 34
    implicitHeight: 20

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onToggleAction: {
        if (enabled)
            clicked();
    }

    onClicked: flipped(!isOn)

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: root.isOn ? Theme.accent : Theme.switchOff
    }

    Rectangle {
        y: 2
        x: root.isOn ? root.width - width - 2 : 2
        width: root.height - 4
        height: width
        radius: width / 2
        color: Theme.knob

        Behavior on x {
            NumberAnimation {
                duration: 120
                easing.type: Easing.OutCubic
            }
        }
    }

    FocusRing {
        // Apart from the ground of one that is on, which has nearly its colour.
        gap: 4
        radius: height / 2
    }
}
