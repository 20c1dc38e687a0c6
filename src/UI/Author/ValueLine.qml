import QtQuick
import Tavrin

// What a value is called, and the value.
Item {
    id: root

    property string symbol
    required property string title
    required property string value
    property color valueColor: Theme.text
    // It is read as the control's name already.
    property bool isPartOfAControl: false

    Symbol {
        id: symbol

        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol !== ""
        width: visible ? size : 0
        name: root.symbol
        size: 16
        color: Theme.accentText
    }

    Label {
        id: title

        anchors.left: symbol.right
        anchors.leftMargin: symbol.visible ? 10 : 0
        anchors.verticalCenter: parent.verticalCenter
        // Values stand below one another, with a symbol in their line or without.
        width: symbol.visible ? 130 : 156
        text: root.title
        font.pixelSize: 12
        color: Theme.secondaryText
        Accessible.ignored: root.isPartOfAControl
    }

    Label {
        anchors.left: title.right
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: root.value
        font.weight: Font.Medium
        color: root.valueColor
        Accessible.ignored: root.isPartOfAControl
    }
}
