import QtQuick
import Tavrin

// A value to take along; not there without one.
Item {
    id: root

    required property AuthorModel author
    required property int copyable
    property alias symbol: line.symbol
    required property string title
    required property string value

    visible: value !== ""
    implicitHeight: 28

    ValueLine {
        id: line

        anchors.fill: parent
        anchors.rightMargin: 28
        title: root.title
        value: root.value
    }

    IconButton {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        label: "Sao chép " + root.title.replace(":", "")
        toolTip: "Sao chép"
        symbol: root.author.copied === root.copyable ? "checkmark" : "doc.on.doc"
        color: root.author.copied === root.copyable ? Theme.greenSymbol : Theme.secondaryText
        onClicked: root.author.copy(root.copyable)
    }
}
