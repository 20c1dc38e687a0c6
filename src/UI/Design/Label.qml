import QtQuick
import Tavrin

// Every text a user reads: plain, never interpreted as markup, and there for a screen reader.
Text {
    color: Theme.text
    textFormat: Text.PlainText
    elide: Text.ElideRight
    font.pixelSize: 13

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
