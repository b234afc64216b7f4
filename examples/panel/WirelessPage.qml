// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

Page {
    // The daemon does not report a connection that is lost.
    Timer {
        interval: 5000
        running: true
        repeat: true
        onTriggered: wifi.status()
    }
    Component.onCompleted: wifi.scan()

    header: RowLayout {
        Label {
            objectName: "state"
            Layout.fillWidth: true
            Layout.margins: 12
            elide: Text.ElideRight
            textFormat: Text.PlainText
            text: {
                switch (wifi.state) {
                case WifiClient.Unavailable: return "The network service is not running"
                case WifiClient.Connecting: return "Connecting …"
                case WifiClient.Connected: return wifi.ssid + "  " + wifi.address
                default: return "Not connected"
                }
            }
        }
        BusyIndicator {
            running: wifi.scanning
            Layout.preferredHeight: 32
            Layout.preferredWidth: 32
        }
        ToolButton {
            objectName: "scan"
            text: "Scan"
            enabled: !wifi.scanning && wifi.state !== WifiClient.Unavailable
            onClicked: wifi.scan()
        }
    }

    ListView {
        objectName: "networks"
        anchors.fill: parent
        clip: true
        model: wifi.networks
        delegate: NetworkRow {
            width: ListView.view.width
            onClicked: model.joined ? menu.openFor(model.ssid) : sheet.openFor(model)
        }
        move: Transition { NumberAnimation { property: "y"; duration: 200 } }
        ScrollBar.vertical: ScrollBar {}
    }

    footer: ToolBar {
        ToolButton {
            objectName: "hidden"
            anchors.centerIn: parent
            text: "Hidden network …"
            onClicked: sheet.openHidden()
        }
    }

    Menu {
        id: menu
        property string ssid
        anchors.centerIn: parent
        function openFor(name) {
            ssid = name
            open()
        }
        MenuItem {
            text: "Disconnect"
            onTriggered: wifi.disconnectFromNetwork()
        }
        MenuItem {
            objectName: "forget"
            text: "Forget this network"
            onTriggered: wifi.forget(menu.ssid)
        }
    }

    JoinSheet {
        id: sheet
        anchors.centerIn: parent
        width: parent.width - 40
    }
}
