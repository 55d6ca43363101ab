import QtQuick 2.0

// A rotary knob from `from` to `to`. Turned by dragging around it, by the wheel, or by a value that
// comes in; tells every new value, whoever turned it.
Item {
    id: knob

    property real from: 0
    property real to: 100
    property real value: 0
    property string unit: "%"
    property color ink: "#808890"       // reads on light and on dark
    property color accent: "#2a9d8f"

    readonly property real angle: -135 + 270 * (value - from) / (to - from)

    signal output(real v)

    function input(v) { set(Number(v)) }

    function set(v) {
        v = Math.min(to, Math.max(from, v))
        if (isNaN(v) || v === value)    // what has not changed goes no further
            return
        value = v
        output(v)
    }

    width: 160
    height: 160
    anchors.fill: parent

    onValueChanged: track.requestPaint()
    onWidthChanged: track.requestPaint()
    onHeightChanged: track.requestPaint()

    Canvas {
        id: track

        anchors.centerIn: parent
        width: Math.min(parent.width, parent.height)
        height: width
        onPaint: {
            var c = getContext("2d")
            var r = width / 2 - 8
            var turn = function(degrees) { return (degrees - 90) * Math.PI / 180 }
            c.reset()
            c.translate(width / 2, height / 2)
            c.lineCap = "round"
            c.lineWidth = 8
            c.strokeStyle = Qt.rgba(knob.ink.r, knob.ink.g, knob.ink.b, 0.35)
            c.beginPath()
            c.arc(0, 0, r, turn(-135), turn(135))
            c.stroke()
            c.strokeStyle = knob.accent
            c.beginPath()
            c.arc(0, 0, r, turn(-135), turn(Math.max(knob.angle, -134.9)))
            c.stroke()
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: track.width * 0.68
        height: width
        radius: width / 2
        color: "#3d4650"
        border { width: 2; color: knob.ink }

        Text {
            anchors.centerIn: parent
            color: "white"
            font.pixelSize: parent.width * 0.24
            text: knob.value.toFixed(0) + " " + knob.unit
        }

        Item {
            anchors.fill: parent
            rotation: knob.angle

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                y: 5
                width: 6
                height: parent.height * 0.14
                radius: 3
                color: knob.accent
            }
        }
    }

    MouseArea {
        anchors.fill: parent
        preventStealing: true
        onPressed: turnTo(mouse)
        onPositionChanged: turnTo(mouse)
        onWheel: knob.set(knob.value + (wheel.angleDelta.y > 0 ? 1 : -1) * (knob.to - knob.from) / 50)

        function turnTo(mouse) {
            var degrees = Math.atan2(mouse.x - width / 2, height / 2 - mouse.y) * 180 / Math.PI
            if (Math.abs(degrees) > 160)    // the gap below belongs to neither end
                return
            var share = (Math.min(135, Math.max(-135, degrees)) + 135) / 270
            knob.set(Math.round(knob.from + share * (knob.to - knob.from)))
        }
    }
}
