import QtQuick
import Tavrin

// Who made the program, how to reach them, whether there is a newer build, and how to say thanks.
ScrollPage {
    id: root

    required property AuthorModel author

    Column {
        width: parent.width
        spacing: 6

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "person.crop.circle.fill"
            size: 54
            color: Theme.accentText
        }

        Label {
            width: parent.width
            visible: text !== ""
            text: root.author.name
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 17
            font.weight: Font.Bold
        }

        Label {
            width: parent.width
            text: "Tác giả & Phát triển ứng dụng Tavrin cho macOS"
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        Badge {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "v" + root.author.currentVersion
            color: Theme.tint(Theme.accent, 0.15)
            textColor: Theme.accentText
        }
    }

    Section {
        width: parent.width
        visible: root.author.hasContacts
        title: "Thông tin liên hệ"

        CopyRow {
            width: parent.width
            author: root.author
            copyable: AuthorModel.Phone
            symbol: "phone.circle.fill"
            title: "Điện thoại:"
            value: root.author.phone
        }

        LinkRow {
            width: parent.width
            author: root.author
            symbol: "bubble.left.and.bubble.right.fill"
            title: "Zalo:"
            address: root.author.zalo
        }

        LinkRow {
            width: parent.width
            author: root.author
            symbol: "paperplane.fill"
            title: "Telegram:"
            address: root.author.telegram
        }

        LinkRow {
            width: parent.width
            author: root.author
            symbol: "globe"
            title: "Facebook:"
            address: root.author.facebook
        }

        LinkRow {
            width: parent.width
            author: root.author
            symbol: "globe"
            title: "Website:"
            address: root.author.website
        }

        LinkRow {
            width: parent.width
            author: root.author
            symbol: "book.fill"
            title: "Hướng dẫn sử dụng:"
            address: root.author.guide
        }
    }

    UpdateBlock {
        width: parent.width
        author: root.author
    }

    Section {
        width: parent.width
        visible: root.author.hasAccount
        symbol: "heart.circle.fill"
        tint: Theme.red
        title: "Ủng hộ phát triển (Donation)"

        Prose {
            width: parent.width
            text: "Nếu ứng dụng giúp ích cho công việc và học tập của bạn, hãy mời tác giả một ly cà phê nhé! ☕"
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        Label {
            width: parent.width
            visible: text !== ""
            text: root.author.bankName
            font.weight: Font.DemiBold
        }

        CopyRow {
            width: parent.width
            author: root.author
            copyable: AuthorModel.AccountHolder
            title: "Chủ tài khoản:"
            value: root.author.accountHolder
        }

        CopyRow {
            width: parent.width
            author: root.author
            copyable: AuthorModel.AccountNumber
            title: "Số tài khoản:"
            value: root.author.accountNumber
        }
    }
}
