// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15

/// A column whose children with `Layout.fillWidth` are as wide as it is.
///
/// A positioner computes its height when the scene is polished, not while a binding is evaluated.
/// So a parent may bind to a height that depends on wrapped text; with a layout that is a binding
/// loop.
Column {
    id: column
    // internal
    property var adopted: []
    spacing: 5
    onChildrenChanged: {
        for (let i = 0; i < children.length; ++i) {
            const child = children[i]
            if (adopted.indexOf(child) >= 0)
                continue
            adopted.push(child)
            child.width = Qt.binding(function() {
                return child.Layout.fillWidth ? column.width : child.implicitWidth
            })
        }
    }
}
