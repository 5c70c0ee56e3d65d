// The busy ring: twelve dots, the bright one turning clockwise with a fading tail. It
// turns only while running and visible in a window that is not minimised; standing
// still, every dot is alike.
import QtQuick 2.12
import QtQuick.Window 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.BusyIndicator {
    id: control

    readonly property int dots: 12
    property color color: Colors.accentColor
    // Diameter of a dot; 0 sizes the dots from the ring.
    property real thickness: 0
    // Of one turn, in ms.
    property int period: 1000
    // The bright dot, clockwise from the top.
    readonly property int currentStep: stepper.step
    readonly property bool animating: stepper.running

    // As the widget: twice the height of a line of text.
    implicitWidth: 2 * Math.ceil(metrics.height)
    implicitHeight: implicitWidth
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Busy")

    FontMetrics {
        id: metrics
        font: control.font
    }

    Timer {
        id: stepper
        property int step: 0
        interval: Math.max(1, Math.round(control.period / control.dots))
        repeat: true
        running: control.running && control.visible && control.period > 0
                 && control.Window.window !== null && control.Window.window.visibility !== Window.Minimized
                 && control.Window.window.visibility !== Window.Hidden
        onTriggered: step = (step + 1) % control.dots
    }

    contentItem: Item {
        id: ring
        readonly property real side: Math.min(width, height)
        readonly property real diameter: control.thickness > 0 ? Math.min(control.thickness, side / 2) : side / 6
        readonly property real radius: (side - diameter) / 2

        Repeater {
            model: control.dots
            Rectangle {
                // The dimmest dot keeps 0.15 of the colour's alpha.
                readonly property int behind: control.running ? (stepper.step - index + control.dots) % control.dots
                                                              : control.dots / 2
                readonly property real angle: 2 * Math.PI * index / control.dots
                x: ring.width / 2 + ring.radius * Math.sin(angle) - width / 2
                y: ring.height / 2 - ring.radius * Math.cos(angle) - height / 2
                width: ring.diameter
                height: ring.diameter
                radius: ring.diameter / 2
                color: Qt.rgba(control.color.r, control.color.g, control.color.b,
                               control.color.a * (1 - 0.85 * behind / (control.dots - 1)))
            }
        }
    }
}
