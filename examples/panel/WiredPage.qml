// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

Page {
    padding: 12

    function load() {
        const reply = wifi.wiredSettings()
        reply.finished.connect(function() {
            message.text = reply.errorText
            if (reply.errorText !== "")
                return
            address.text = reply.result.address
            gateway.text = reply.result.gateway
            netmask.text = reply.result.netmask
            dhcp.checked = reply.result.dhcp
        })
    }
    function follow(reply) {
        reply.finished.connect(function() {
            message.text = reply.errorText || "Stored; takes effect at the next start of the device."
        })
    }

    GridLayout {
        anchors { left: parent.left; right: parent.right }
        columns: 2
        Label { text: "Address" }
        TextField { id: address; objectName: "address"; Layout.fillWidth: true }
        Label { text: "Gateway" }
        TextField { id: gateway; Layout.fillWidth: true }
        Label { text: "Network mask" }
        TextField { id: netmask; Layout.fillWidth: true }
        Button {
            text: "Store"
            Layout.columnSpan: 2
            Layout.alignment: Qt.AlignRight
            onClicked: follow(wifi.setWiredAddress(address.text, gateway.text, netmask.text))
        }
        Switch {
            id: dhcp
            text: "Obtain the address by DHCP"
            Layout.columnSpan: 2
            onToggled: follow(wifi.setWiredDhcp(checked))
        }
        Label {
            id: message
            Layout.columnSpan: 2
            Layout.fillWidth: true
            wrapMode: Text.Wrap
        }
    }
}
