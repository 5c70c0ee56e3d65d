import QtQuick 2.12
import Orvanta.Styles 1.0

// A swatch for every colour of the table, named.
Rectangle {
    id: root
    color: Colors.panelBackground
    border.color: Colors.borderColor
    radius: 4
    implicitHeight: swatches.implicitHeight + 24

    Flow {
        id: swatches
        x: 12
        y: 12
        width: root.width - 24
        spacing: 8
        Repeater {
            model: Colors.keys()
            delegate: Column {
                spacing: 4
                width: 120
                Rectangle {
                    width: 120
                    height: 28
                    radius: 3
                    color: Colors[modelData]
                    border.color: Colors.borderColor
                }
                Text {
                    width: 120
                    text: modelData
                    elide: Text.ElideRight
                    color: Colors.mutedText
                    font.pixelSize: 11
                }
            }
        }
    }
}
