pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tavrin

// One of several, listed when asked for. With a caption it is a menu: it keeps its text and chooses anew.
Pressable {
    id: root

    required property list<string> titles
    // A second line below each title, where there are any; and a symbol before it.
    property list<string> descriptions
    property list<string> symbols
    property int current: -1
    property string caption
    readonly property string currentText: caption !== "" ? caption : current >= 0 ? titles[current] : ""
    readonly property bool isOpen: popup.active

    signal chosen(index: int)

    implicitWidth: 200
    implicitHeight: 30

    Accessible.role: Accessible.ComboBox
    Accessible.name: caption !== "" ? caption : label + ": " + currentText

    onClicked: popup.active = true
    Keys.onDownPressed: popup.active = true
    Keys.onUpPressed: popup.active = true

    function close(): void {
        popup.active = false;
        forceActiveFocus();
    }

    FieldGround {
        anchors.fill: parent
        isFocused: root.activeFocus
        color: root.isPressed ? Theme.pressed : Theme.field
    }

    Label {
        anchors.left: parent.left
        anchors.leftMargin: 11
        anchors.right: arrows.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        text: root.currentText
        font.weight: Font.Medium
        Accessible.ignored: true
    }

    Symbol {
        id: arrows

        anchors.right: parent.right
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.up.chevron.down"
        size: 12
        color: Theme.secondaryText
    }

    Lazy {
        id: popup

        parent: root.Window.contentItem
        anchors.fill: parent
        z: 100

        PickerList {
            owner: root
            label: root.label
            titles: root.titles
            descriptions: root.descriptions
            symbols: root.symbols
            current: root.current
            onDismissed: root.close()
            onChosen: index => {
                root.close();
                root.chosen(index);
            }
        }
    }
}
