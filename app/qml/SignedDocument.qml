// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The document of the signing page: the file at `path` as it is now. A loader holds the file that
/// it has opened, whatever becomes of its path, so each reading has a loader of its own.
QtObject {
    id: document
    property string path
    property LoaderFile loader: null
    /// Whether it could be read.
    property bool ready: false
    /// Why there is nothing to sign; empty where there is, or nothing was opened.
    property string problem
    /// While nobody needs the bytes that are held, the path is looked at again and again.
    property bool watched: false
    /// Other contents were found at the path, and read.
    signal changed()

    /// What was read, plain: it outlives its loader. Empty where that failed.
    property string fileName
    property string mimeType
    property string digest
    property real fileSize: 0
    property string stamp
    property string lastStamp

    function open(path_) {
        path = path_
        read()
    }
    function read() {
        const old = loader
        const fresh = factory.createObject(document)
        stamp = Files.stamp(path)
        lastStamp = stamp
        fresh.filePath = path
        loader = fresh
        ready = fresh.status === LoaderFile.Ready
        problem = ready ? "" : fresh.error === LoaderFile.ErrorMimeType
            ? qsTrId("trivex-app-document-type") : Files.whyNotRead(path)
        fileName = ready ? fresh.fileName : ""
        mimeType = ready ? fresh.mimeType : ""
        digest = ready ? fresh.fileHash : ""
        fileSize = ready ? fresh.fileSize : 0
        if (old)
            old.destroy()
    }
    /// Reads the file again where it is another than the one that is held; true when its contents
    /// are others, or are there no more.
    function refresh() {
        const held = loader && loader.status === LoaderFile.Ready
        if (!path || Files.stamp(path) === stamp && ready === held)
            return false
        const before = digest
        read()
        return digest !== before
    }
    function look() {
        const now = Files.stamp(path)
        // Read only when it has come to rest: somebody may be writing it.
        const resting = now === lastStamp
        lastStamp = now
        if (resting && refresh())
            changed()
    }
    readonly property Component factory: Component {
        LoaderFile {}
    }
    readonly property Timer clock: Timer {
        interval: 500
        repeat: true
        running: document.watched && document.path.length > 0
        onTriggered: document.look()
    }
}
