// A progress bar. A new value is reached by an animation (duration ms, OutCubic, as
// ProgressBarAnimator); indeterminate shows a sweep, while visible. The template keeps
// the value in the range; one that is not a number reads as the start.
import QtQuick 2.12
import QtQuick.Templates 2.12 as T
import Orvanta.Styles 1.0

T.ProgressBar {
    id: control

    property int duration: 400
    // The share of the bar filled, 0 to 1, as shown (before the animation).
    readonly property real fill: isFinite(visualPosition) ? Math.max(0, Math.min(1, visualPosition)) : 0

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    contentItem: Item {
        implicitWidth: 160
        implicitHeight: 6
        clip: true

        Rectangle {
            objectName: "bar"
            height: parent.height
            width: control.indeterminate ? 0 : control.fill * parent.width
            x: control.mirrored ? parent.width - width : 0
            radius: 3
            color: control.enabled ? Colors.accentColor : Colors.disabledText
            Behavior on width {
                enabled: control.duration > 0 && control.visible
                NumberAnimation { duration: control.duration; easing.type: Easing.OutCubic }
            }
        }

        Rectangle {
            id: sweep
            objectName: "sweep"
            visible: control.indeterminate
            width: parent.width / 4
            height: parent.height
            radius: 3
            color: Colors.accentColor
            NumberAnimation on x {
                running: control.indeterminate && control.visible
                from: -sweep.width
                to: sweep.parent.width
                duration: 1200
                loops: Animation.Infinite
            }
        }
    }

    background: Rectangle {
        implicitWidth: 160
        implicitHeight: 6
        y: (control.height - height) / 2
        height: control.availableHeight
        radius: 3
        color: Colors.progressTrack
    }
}
