import QtQuick
import QtQuick.Window

Window {
    visible: true
    color: "black"
}
