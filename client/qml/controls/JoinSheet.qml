// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import BxWifi 1.0

// Asks for what joining a network takes, joins it, and tells how that goes: under way, refused, or
// on the way back to the network that was joined before. It closes when the network is joined.
Dialog {
    id: sheet

    required property WifiClient client

    property string ssid
    property int security: Security.Wpa
    property bool hidden: false
    property bool asksKind: false ///< of protection
    property bool malformed: false ///< A code that names no network
    property WifiReply reply: null ///< The join on its way; what others come to is not heard

    readonly property bool busy: reply !== null
    readonly property bool enterprise: security === Security.Enterprise
    readonly property bool unsupported: security === Security.Unsupported
    readonly property string advice: {
        if (asksKind && !hidden)
            return qsTr("There are several networks of this name. Choose how yours is protected.")
        switch (security) {
        case Security.Open:
            return qsTr("This network is not protected: others can read what is sent over it.")
        case Security.Unsupported:
            return qsTr("This device cannot join a network that is protected in this way.")
        case Security.Wpa:
        case Security.Wep:
            return qsTr("Leave it empty to use what the device has stored.")
        default:
            return ""
        }
    }
    readonly property string progress: {
        if (!busy)
            return ""
        switch (reply.stage) {
        case WifiReply.Scanning: return qsTr("Looking for the network …")
        case WifiReply.Associating: return qsTr("Joining the network …")
        case WifiReply.Addressing: return qsTr("Waiting for an address …")
        case WifiReply.Returning: return qsTr("Going back to the former network …")
        default: return qsTr("Asking the network service …")
        }
    }

    /// Opens for a row of a NetworkList. Joins at once what the device has joined before, if that
    /// takes neither a secret, nor a choice, nor the risk of a network without protection.
    function openFor(network) {
        show(network.ssid, network.security, false, network.ambiguous)
        if (network.known && !asksKind && (security === Security.Wpa || security === Security.Wep))
            join()
    }
    /// Opens with what the text of a QR code says, "WIFI:..."; whoever scanned it has yet to agree.
    function openForUri(uri) {
        const code = JoinCode.read(uri)
        show(code.ssid, code.security, code.hidden, false)
        name.text = code.ssid
        identity.text = code.identity
        secret.text = code.secret
        malformed = code.problem !== ""
        problem.text = code.problem
        focusFirst()
    }
    /// Opens for a network that does not announce its name.
    function openHidden() {
        show("", Security.Wpa, true, true)
    }
    function show(ssid_, security_, hidden_, asksKind_) {
        giveUp()
        ssid = ssid_
        hidden = hidden_
        asksKind = asksKind_
        kinds.currentIndex = 0
        security = asksKind ? kinds.currentValue : security_
        for (const field of [name, identity, secret])
            field.clear()
        reveal.checked = false
        problem.text = ""
        malformed = false
        open()
        focusFirst()
    }
    function focusFirst() {
        const wanted = [name, kinds, identity, secret, joinButton, cancelButton]
        wanted.find(item => item.visible && item.enabled).forceActiveFocus(Qt.TabFocusReason)
    }
    function join() {
        const password = security === Security.Open ? "" : secret.text
        const user = enterprise ? identity.text : ""
        problem.text = ""
        reply = hidden ? client.connectToHidden(name.text, security, password, user)
                       : client.connectTo(ssid, password, user, security)
        cancelButton.forceActiveFocus()
    }
    function end() {
        const error = reply.error
        problem.text = reply.errorText
        reply = null
        // A code may leave open which of several kinds it means.
        if (error === WifiReply.InvalidRequest && security === Security.Automatic
                && client.networks.security(ssid) === Security.Automatic) {
            asksKind = true
            security = kinds.currentValue
        }
        if (error === WifiReply.NoError || error === WifiReply.Aborted)
            close()
        else
            focusFirst()
    }
    // The join goes on with its way back, unheard.
    function giveUp() {
        if (busy)
            reply.abort()
        reply = null
    }
    // The first time while a join is on its way, to see it go back; then to close.
    function cancel() {
        if (busy && reply.stage !== WifiReply.Returning)
            reply.abort()
        else
            close()
    }

    title: hidden ? qsTr("Hidden network") : qsTr("Join a network") // never a name: it may be markup
    modal: true
    closePolicy: Popup.NoAutoClose
    onAboutToHide: giveUp()
    onClosed: secret.clear()

    Connections {
        target: sheet.reply
        function onFinished() { sheet.end() }
    }

    contentItem: Column {
        spacing: 8
        Keys.onEscapePressed: sheet.cancel()

        Label {
            objectName: "ssid"
            visible: !sheet.hidden
            text: sheet.ssid
            textFormat: Text.PlainText // names come from strangers
            font.bold: true
            maximumLineCount: 1
            elide: Text.ElideRight
            width: parent.width
        }
        TextField {
            id: name
            objectName: "name"
            visible: sheet.hidden
            enabled: !sheet.busy
            placeholderText: Accessible.name
            inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
            width: parent.width
            Accessible.name: qsTr("Name")
        }
        ComboBox {
            id: kinds
            objectName: "kinds"
            visible: sheet.asksKind
            enabled: !sheet.busy
            width: parent.width
            textRole: "text"
            valueRole: "value"
            model: [
                { text: qsTr("WPA, WPA2"), value: Security.Wpa },
                { text: qsTr("WPA3"), value: Security.Wpa3 },
                { text: qsTr("WPA2 Enterprise"), value: Security.Enterprise },
                { text: qsTr("WEP"), value: Security.Wep },
                //: a network without protection
                { text: qsTr("None"), value: Security.Open }
            ]
            onActivated: sheet.security = currentValue
            Accessible.name: qsTr("Protection")
        }
        TextField {
            id: identity
            objectName: "identity"
            visible: sheet.enterprise
            enabled: !sheet.busy
            placeholderText: Accessible.name
            inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
            width: parent.width
            Accessible.name: qsTr("User name")
        }
        TextField {
            id: secret
            objectName: "secret"
            visible: sheet.security !== Security.Open && !sheet.unsupported && !sheet.malformed
            enabled: !sheet.busy
            placeholderText: sheet.enterprise ? qsTr("Password") : qsTr("Passphrase")
            echoMode: reveal.checked ? TextInput.Normal : TextInput.Password
            inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
            width: parent.width
            Accessible.description: placeholderText // Qt keeps the name of a hidden text to itself
            onAccepted: sheet.join()
        }
        CheckBox {
            id: reveal
            objectName: "reveal"
            visible: secret.visible
            //: a box to tick: whether the passphrase can be read while it is typed
            text: qsTr("Show")
            Accessible.name: text
        }
        Label {
            objectName: "advice"
            visible: text !== "" && !sheet.busy && problem.text === ""
            text: sheet.advice
            wrapMode: Text.Wrap
            opacity: 0.6
            width: parent.width
        }
        Label {
            id: problem
            objectName: "problem"
            visible: text !== ""
            textFormat: Text.PlainText // it may tell of a network by its name
            wrapMode: Text.Wrap
            font.bold: true
            width: parent.width
            Accessible.name: text
        }
        Label {
            objectName: "progress"
            visible: sheet.busy
            text: sheet.progress
            wrapMode: Text.Wrap
            width: parent.width
            Accessible.name: text
        }
        RowLayout {
            anchors.right: parent.right
            BusyIndicator {
                running: sheet.busy
                Layout.preferredHeight: cancelButton.implicitHeight
                Layout.preferredWidth: cancelButton.implicitHeight
                Accessible.ignored: true
            }
            Button {
                id: cancelButton
                objectName: "cancel"
                text: qsTr("Cancel")
                Accessible.name: text
                onClicked: sheet.cancel()
            }
            Button {
                id: joinButton
                objectName: "join"
                //: a button: join this network
                text: qsTr("Join")
                Accessible.name: text
                highlighted: true
                enabled: !sheet.busy && !sheet.unsupported && !sheet.malformed
                onClicked: sheet.join()
            }
        }
    }
}
