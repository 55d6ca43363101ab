import QtQuick 2.0

// An XY pad: two numbers from -1 to 1 with one finger. A double click brings it back to the middle.
Item {
    id: pad

    property real x0: 0
    property real y0: 0
    property color ink: "#808890"       // reads on light and on dark
    property color accent: "#2a9d8f"

    signal outputX(real v)
    signal outputY(real v)

    function center() { moveTo(0, 0) }

    function moveTo(x, y) {
        x = Math.min(1, Math.max(-1, Number(x)))
        y = Math.min(1, Math.max(-1, Number(y)))
        if (!isNaN(x) && x !== x0) {
            x0 = x
            outputX(x)
        }
        if (!isNaN(y) && y !== y0) {
            y0 = y
            outputY(y)
        }
    }

    width: 200
    height: 200
    anchors.fill: parent

    Rectangle {
        id: field

        anchors.centerIn: parent
        width: Math.min(parent.width, parent.height) - 4
        height: width
        radius: 8
        color: Qt.rgba(pad.ink.r, pad.ink.g, pad.ink.b, 0.15)
        border { width: 2; color: pad.ink }

        Rectangle {
            anchors { left: parent.left; right: parent.right; verticalCenter: dot.verticalCenter }
            height: 1
            color: pad.ink
        }

        Rectangle {
            anchors { top: parent.top; bottom: parent.bottom; horizontalCenter: dot.horizontalCenter }
            width: 1
            color: pad.ink
        }

        Rectangle {
            id: dot

            x: (pad.x0 + 1) / 2 * field.width - width / 2
            y: (1 - pad.y0) / 2 * field.height - height / 2
            width: 28
            height: width
            radius: width / 2
            color: pad.accent
            border { width: 2; color: "white" }
        }

        MouseArea {
            anchors.fill: parent
            preventStealing: true
            onPressed: follow(mouse)
            onPositionChanged: follow(mouse)
            onDoubleClicked: pad.center()

            function follow(mouse) {
                pad.moveTo(mouse.x / width * 2 - 1, 1 - mouse.y / height * 2)
            }
        }
    }
}
