import QtQuick 2.0

Rectangle {
    property real level: NaN // %; none before the first
    readonly property bool isKnown: !isNaN(level)
    readonly property var isBad: isKnown ? level < 20 || level > 85 : undefined
    signal alarm(bool on)
    onIsBadChanged: alarm(isBad)
    function input(v) { level = v }

    width: 120; height: 200
    anchors.fill: parent
    anchors.margins: 6
    radius: 8
    color: "#dfe3e8"

    Rectangle {
        width: parent.width
        height: parent.isKnown ? parent.height * parent.level / 100 : 0
        anchors.bottom: parent.bottom
        radius: 8
        color: parent.isBad ? "#ef8079" : "#79b8e6"
    }
    Text {
        anchors.centerIn: parent
        font.pixelSize: 28
        text: parent.isKnown ? parent.level.toFixed(0) + " %" : "—"
    }
}
