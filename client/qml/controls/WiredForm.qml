// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

// The wired interface's addressing from the next start of the device on.
Pane {
    id: form

    required property WifiClient client
    readonly property bool ready: visible && client.state !== WifiClient.Unavailable
    property bool busy: false

    onReadyChanged: if (ready) load()
    Component.onCompleted: if (ready) load()

    function load() {
        ask(client.wiredSettings(), function(reply) {
            address.text = reply.result.address
            gateway.text = reply.result.gateway
            netmask.text = reply.result.netmask
            dhcp.checked = reply.result.dhcp
            return ""
        })
    }
    function store() {
        ask(client.setWiredAddress(address.text, gateway.text, netmask.text), stored)
    }
    function stored() {
        return qsTr("Stored; takes effect at the next start of the device.")
    }
    // Says what went wrong, or what `done` returns for success.
    function ask(reply, done, failed) {
        busy = true
        reply.finished.connect(function() {
            form.busy = false
            if (reply.errorText !== "" && failed)
                failed()
            message.text = reply.errorText || done(reply)
        })
    }

    contentItem: ColumnLayout {
        GridLayout {
            enabled: form.ready && !form.busy
            columns: 2
            Layout.fillWidth: true
            Label { text: address.Accessible.name; Accessible.ignored: true }
            TextField {
                id: address
                objectName: "address"
                Layout.fillWidth: true
                inputMethodHints: Qt.ImhPreferNumbers
                Accessible.name: qsTr("Address")
            }
            Label { text: gateway.Accessible.name; Accessible.ignored: true }
            TextField {
                id: gateway
                objectName: "gateway"
                Layout.fillWidth: true
                inputMethodHints: Qt.ImhPreferNumbers
                Accessible.name: qsTr("Gateway")
            }
            Label { text: netmask.Accessible.name; Accessible.ignored: true }
            TextField {
                id: netmask
                objectName: "netmask"
                Layout.fillWidth: true
                inputMethodHints: Qt.ImhPreferNumbers
                Accessible.name: qsTr("Network mask")
            }
            Button {
                objectName: "store"
                text: qsTr("Store")
                Accessible.name: text
                Layout.columnSpan: 2
                Layout.alignment: Qt.AlignRight
                onClicked: form.store()
            }
            Switch {
                id: dhcp
                objectName: "dhcp"
                text: qsTr("Address by DHCP")
                Accessible.name: text
                Layout.columnSpan: 2
                Layout.fillWidth: true
                onToggled: form.ask(form.client.setWiredDhcp(checked), form.stored, toggle)
            }
        }
        Label {
            id: message
            objectName: "message"
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            Accessible.name: text
        }
        Item { Layout.fillHeight: true }
    }
}
