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
    /// Whether its bytes are needed here, as for a bare signature. Else it may be of any type and
    /// length, and whoever signs it reads it.
    property bool raw: true
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
    /// Another text for other contents, as far as that can be told.
    readonly property string fingerprint: raw ? digest : stamp
    onRawChanged: if (path) read()

    function open(path_) {
        path = path_
        read()
    }
    /// Leaves the document.
    function close() {
        path = ""
        describe()
        problem = ""
    }
    function read() {
        stamp = Files.stamp(path)
        lastStamp = stamp
        if (raw)
            load()
        else
            describe()
    }
    /// Asks the file system about the document, and holds no file open.
    function describe() {
        const old = loader
        loader = null
        ready = Files.isReadable(path)
        problem = ready ? "" : Files.whyNotRead(path)
        fileName = ready ? Files.fileName(path) : ""
        mimeType = ready ? Files.mimeType(path) : ""
        fileSize = ready ? Files.size(path) : 0
        digest = ""
        if (old)
            old.destroy()
    }
    function load() {
        const old = loader
        const fresh = factory.createObject(document)
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
        const held = raw ? loader && loader.status === LoaderFile.Ready : ready
        if (!path || Files.stamp(path) === stamp && ready === held)
            return false
        const before = fingerprint
        read()
        return fingerprint !== before
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
