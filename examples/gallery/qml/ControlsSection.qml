import QtQuick 2.12
import Orvanta.Controls 1.0
import Orvanta.Styles 1.0

// Buttons and input of Orvanta.Controls on a panel.
Rectangle {
    id: root
    color: Colors.panelBackground
    border.color: Colors.borderColor
    radius: 4
    implicitHeight: column.implicitHeight + 24

    Column {
        id: column
        x: 12
        y: 12
        width: root.width - 24
        spacing: 10

        Flow {
            width: parent.width
            spacing: 8
            Button { text: qsTr("Save") }
            Button { text: qsTr("Disabled"); enabled: false }
            ToolButton { text: qsTr("Tool") }
            CheckBox { text: qsTr("Remember me"); checked: true }
            CheckBox { text: qsTr("Notify") }
        }
        Flow {
            width: parent.width
            spacing: 8
            TextField { width: 200; placeholderText: qsTr("Your name") }
            SearchField {
                id: search
                width: 200
                placeholderText: qsTr("Search")
                onSearchStarted: found.text = qsTr("Searching for “%1”").arg(text)
                onSearchReset: found.text = ""
            }
            ComboBox { width: 160; model: [qsTr("Daily"), qsTr("Weekly"), qsTr("Monthly")] }
        }
        Text {
            id: found
            color: Colors.mutedText
            height: text.length > 0 ? implicitHeight : 0
        }
    }
}
