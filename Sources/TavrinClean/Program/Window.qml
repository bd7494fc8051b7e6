import QtQuick
import QtQuick.Window
import Tavrin.Theme
import Tavrin.Words

Window {
    width: 1120
    height: 740
    minimumWidth: 940
    minimumHeight: 620
    visible: true
    title: S.appName
    color: Brand.deepest

    BrandBackground { anchors.fill: parent }
    GemLogo {
        anchors.centerIn: parent
        width: 140
        height: 140
    }
}
