import QtQuick
import Tavrin

// A way to the author that opens in the browser; not there without an address.
Pressable {
    id: root

    required property AuthorModel author
    required property string symbol
    required property string title
    required property string address

    readonly property string value: author.shownAddress(address)

    label: title + " " + value
    visible: address !== ""
    implicitHeight: 28
    onClicked: author.open(address)

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -6
        anchors.rightMargin: -6
        radius: 6
        color: root.isPressed ? Theme.pressed : root.isHovered ? Theme.well : "transparent"
    }

    FocusRing {
        radius: 6
    }

    ValueLine {
        anchors.fill: parent
        anchors.rightMargin: 28
        symbol: root.symbol
        title: root.title
        value: root.value
        valueColor: Theme.accentText
        isPartOfAControl: true
    }

    Symbol {
        anchors.right: parent.right
        anchors.rightMargin: 7
        anchors.verticalCenter: parent.verticalCenter
        name: "arrow.up.right.square"
        size: 13
        color: Theme.accentText
    }
}
