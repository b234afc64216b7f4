// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15

// The strength of a signal, as rising bars of which the first `bars` of four are lit.
Row {
    property int bars
    property color color

    spacing: 2

    Repeater {
        model: 4
        Rectangle {
            anchors.bottom: parent.bottom
            width: 4
            height: 4 + 4 * index
            color: parent.color
            opacity: index < parent.bars ? 1 : 0.2
        }
    }
}
