// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15

// A padlock.
Item {
    property color color

    implicitWidth: 12
    implicitHeight: 16

    Rectangle { // shackle
        x: 2
        width: 8
        height: 12
        radius: 4
        color: "transparent"
        border { width: 2; color: parent.color }
    }
    Rectangle { // body
        y: 7
        width: 12
        height: 9
        radius: 2
        color: parent.color
    }
}
