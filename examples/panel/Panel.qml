// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0
import BxWifi.Controls 1.0

ApplicationWindow {
    width: 400
    height: 560
    visible: true
    title: qsTr("Network")

    WifiClient {
        id: wifi
        pollInterval: 5000 // a lost connection shows within that time
        Component.onCompleted: bar.scan()
    }

    header: TabBar {
        id: tabs
        TabButton { objectName: "wirelessTab"; text: qsTr("Wi-Fi"); Accessible.name: text }
        TabButton { objectName: "wiredTab"; text: qsTr("Wired"); Accessible.name: text }
    }
    StackLayout {
        anchors.fill: parent
        currentIndex: tabs.currentIndex

        ColumnLayout {
            spacing: 0
            ConnectionBar { id: bar; client: wifi; Layout.fillWidth: true }
            NetworkList {
                client: wifi
                Layout.fillWidth: true
                Layout.fillHeight: true
                onChosen: network.joined ? menu.openFor(network) : sheet.openFor(network)
                onHeld: menu.openFor(network)
            }
            ToolButton {
                objectName: "hidden"
                text: qsTr("Hidden network …")
                Accessible.name: text
                Layout.fillWidth: true
                onClicked: sheet.openHidden()
            }
        }
        WiredForm { client: wifi }
    }

    NetworkMenu { id: menu; client: wifi; anchors.centerIn: parent; onFailed: bar.problem = text }
    JoinSheet { id: sheet; objectName: "sheet"; client: wifi; anchors.centerIn: parent; width: parent.width - 40 }
}
