// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The details of one certificate: a header with its actions, and everything that is in it.
/// `groups` is what `CertificateDetails` gives; made of plain maps in the gallery.
///
///     DetailsView {
///         groups: rows.groups
///         sections.hasEncoding: rows.hasEncoding
///         sections.pem: function() { return rows.pem }
///         sections.structure: function() { return rows.structure }
///     }
FormPage {
    id: view
    /// What is shown, in the form of `CertificateDetails.groups`.
    property alias groups: sections.groups
    /// The `CertificateHeader`, for its values and signals.
    property alias header: header
    /// The `DetailSections`, for its functions and signals.
    property alias sections: sections
    /// Where it is set, the verdict and the path are shown below the header.
    property CertificateChain chain: null
    /// There is room for the values beside the header and the path.
    readonly property bool wide: width > Theme.fontSize * 106
    /// That certificate of the path, a row of the chain's `stepItems`, is to be shown in full.
    signal stepAsked(int row)
    endSpace: Theme.unit * 3
    Accessible.name: qsTrId("trivex-app-details")

    Item {
        id: columns
        // A positioner's height, for which no layout asks while it works out its own.
        implicitHeight: view.wide ? Math.max(start.height, sections.height)
                                  : start.height + view.spacing + sections.height
        Layout.fillWidth: true
        FillColumn {
            id: start
            width: view.wide ? Math.min(Theme.fontSize * 70, columns.width * 0.48) : columns.width
            spacing: view.spacing
            CertificateHeader {
                id: header
                Layout.fillWidth: true
            }
            ChainView {
                chain: view.chain
                onShowAsked: view.stepAsked(row)
                Layout.fillWidth: true
            }
        }
        DetailSections {
            id: sections
            x: view.wide ? start.width + Theme.unit * 1.75 : 0
            y: view.wide ? 0 : start.height + view.spacing
            width: columns.width - x
        }
    }
}
