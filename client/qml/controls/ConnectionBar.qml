// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

// What a client is connected to, and a button that has it look for networks.
Pane {
    id: bar

    required property WifiClient client

    /// What went wrong, in a sentence; it goes with the next change of the connection.
    property string problem

    function scan() {
        const reply = client.scan()
        reply.finished.connect(function() { bar.problem = reply.errorText })
    }

    contentItem: RowLayout {
        Column {
            Layout.fillWidth: true
            Label {
                id: connection
                objectName: "state"
                width: parent.width
                maximumLineCount: 1
                elide: Text.ElideRight
                textFormat: Text.PlainText // names come from strangers
                Accessible.name: text
                text: {
                    switch (bar.client.state) {
                    case WifiClient.Unavailable: return qsTr("The network service is not running")
                    case WifiClient.Connecting: return qsTr("Connecting …")
                    case WifiClient.Connected: return bar.client.ssid
                    default: return qsTr("Not connected")
                    }
                }
                onTextChanged: bar.problem = ""
            }
            Label {
                objectName: "address"
                width: parent.width
                visible: text !== ""
                text: bar.problem || bar.client.address
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                font.pixelSize: Math.round(connection.font.pixelSize * 0.75)
                Accessible.name: text
            }
        }
        BusyIndicator {
            running: bar.client.scanning
            Layout.preferredHeight: button.implicitHeight
            Layout.preferredWidth: button.implicitHeight
            Accessible.ignored: true
        }
        ToolButton {
            id: button
            objectName: "scan"
            //: a button: look for networks
            text: qsTr("Scan")
            Accessible.name: text
            enabled: !bar.client.scanning && bar.client.state !== WifiClient.Unavailable
            onClicked: bar.scan()
        }
    }
}
