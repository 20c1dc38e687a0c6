import QtQuick
import Tavrin

// The author page as the window has it.
AuthorView {
    required property ContentModel content

    author: content.author
}
