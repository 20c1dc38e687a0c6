import QtQuick
import Tavrin

// A feature on a ground of its own.
Card {
    id: root

    required property string symbol
    required property string title
    required property string description
    property alias tint: row.tint

    implicitHeight: row.height + 20

    FeatureRow {
        id: row

        x: 12
        y: 10
        width: parent.width - 24
        symbol: root.symbol
        title: root.title
        description: root.description
    }
}
