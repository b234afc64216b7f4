// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

Dialog {
    id: sheet
    property string ssid
    property int security
    property bool hidden: false
    property bool busy: false
    readonly property bool enterprise: security === BxWifi.Enterprise

    title: hidden ? "Hidden network" : ssid
    modal: true
    closePolicy: Popup.CloseOnEscape

    function openFor(network) {
        show(network.ssid, network.security, false)
        if (security === BxWifi.Open || network.known)
            join()
        else
            secret.forceActiveFocus()
    }
    function openHidden() {
        show("", kinds.currentValue, true)
        name.forceActiveFocus()
    }
    function show(ssid_, security_, hidden_) {
        ssid = ssid_
        security = security_
        hidden = hidden_
        secret.clear()
        identity.clear()
        problem.text = ""
        open()
    }
    function join() {
        const reply = hidden ? wifi.connectToHidden(name.text, security, secret.text, identity.text)
                             : wifi.connectTo(ssid, secret.text, identity.text)
        busy = true
        problem.text = ""
        reply.finished.connect(function() {
            busy = false
            problem.text = reply.errorText
            if (reply.errorText === "")
                sheet.close()
        })
    }

    contentItem: ColumnLayout {
        TextField {
            id: name
            objectName: "name"
            visible: sheet.hidden
            placeholderText: "Name"
            Layout.fillWidth: true
        }
        ComboBox {
            id: kinds
            visible: sheet.hidden
            Layout.fillWidth: true
            textRole: "text"
            valueRole: "value"
            model: [
                { text: "WPA, WPA2", value: BxWifi.Wpa },
                { text: "WPA3", value: BxWifi.Wpa3 },
                { text: "WPA2 Enterprise", value: BxWifi.Enterprise },
                { text: "WEP", value: BxWifi.Wep },
                { text: "None", value: BxWifi.Open }
            ]
            onActivated: sheet.security = currentValue
        }
        TextField {
            id: identity
            objectName: "identity"
            visible: sheet.enterprise
            placeholderText: "User name"
            Layout.fillWidth: true
        }
        TextField {
            id: secret
            objectName: "secret"
            visible: sheet.security !== BxWifi.Open
            placeholderText: sheet.enterprise ? "Password" : "Passphrase"
            echoMode: TextInput.Password
            enabled: !sheet.busy
            Layout.fillWidth: true
            onAccepted: sheet.join()
        }
        Label {
            id: problem
            objectName: "problem"
            visible: text !== ""
            color: "#c0392b"
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            BusyIndicator {
                running: sheet.busy
                Layout.preferredHeight: 32
                Layout.preferredWidth: 32
            }
            Button {
                text: "Cancel"
                onClicked: sheet.close()
            }
            Button {
                objectName: "join"
                text: "Join"
                highlighted: true
                enabled: !sheet.busy
                onClicked: sheet.join()
            }
        }
    }
}
