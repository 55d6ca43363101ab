import QtQuick 2.0

Rectangle {
    width: 120
    height: 60
    anchors.fill: parent
    color: "steelblue"
    focus: true
    signal output(double value)
    Keys.onPressed: output(event.key)
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onClicked: parent.output(1)
        onWheel: parent.output(2)
    }
}
