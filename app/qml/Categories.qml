// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

/// The categories of certificates in their order, with their names: what is known of them before
/// there is a certificate.
QtObject {
    readonly property var all: [
        { key: "personal", icon: "person", title: qsTrId("trivex-app-category-personal"),
          about: qsTrId("trivex-app-about-personal") },
        { key: "users", icon: "users", title: qsTrId("trivex-app-category-users"),
          about: qsTrId("trivex-app-about-users") },
        { key: "roots", icon: "shield", title: qsTrId("trivex-app-category-roots"),
          about: qsTrId("trivex-app-about-roots") },
        { key: "others", icon: "certificate", title: qsTrId("trivex-app-category-others"),
          about: qsTrId("trivex-app-about-others") },
        { key: "system", icon: "lock", title: qsTrId("trivex-app-category-system"),
          about: qsTrId("trivex-app-about-system") }
    ]

    function named(key) {
        for (const one of all) {
            if (one.key === key)
                return one
        }
        return null
    }
}
