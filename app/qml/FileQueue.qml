// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Files from the command line, a second start or a drop, one after the other. What each is, its
/// content says. Of those that came together one document is opened: its page holds no more.
QtObject {
    id: queue
    /// A page that is to get what can't be read at all, instead of the import.
    property bool documentsFirst: false
    /// Asked before each file; true while there is no place for another.
    property var isBlocked: function() { return false }
    property var waiting: []
    /// What was handed to the import last.
    property string imported
    property bool hasDocument: false
    /// The file that is being looked into, if that takes its time.
    property string current
    property CertificateFile probe: CertificateFile {}
    /// Knows signed messages that are too long for a certificate file, and mails.
    property DocumentVerifier messages: DocumentVerifier {}
    property Connections news: Connections {
        target: queue.probe
        function onContentChanged() {
            if (queue.current && !queue.probe.reading)
                queue.haveRead()
        }
    }
    property Timer patience: Timer {
        interval: 300
        onTriggered: if (queue.current) queue.slow(queue.current)
    }
    /// Knows which documents can be signed.
    property LoaderFile documents: LoaderFile {}
    signal importable(string path)
    signal document(string path)
    signal leftOut(string path)
    /// It takes long to find out what this file is; one of the others follows, or `leave` ends it.
    signal slow(string path)

    /// A file that waits already, or that the import still shows, comes once: who opens it again
    /// wants to see it, not to be asked twice.
    function add(files) {
        for (const file of files) {
            if (waiting.indexOf(file) < 0 && file !== current && !(file === imported && isBlocked()))
                waiting = waiting.concat([file])
        }
        next()
    }
    function next() {
        while (waiting.length && !current && !isBlocked()) {
            const path = waiting[0]
            waiting = waiting.slice(1)
            probe.open(path)
            if (!probe.reading) {
                hand(path)
            } else {
                current = path
                patience.restart()
            }
        }
        if (!waiting.length && !current)
            hasDocument = false
    }
    /// Reads the slow file no further.
    function leave() {
        current = ""
        probe.path = ""
        next()
    }
    /// Opens none of those that wait; the one that is shown or read stays.
    function leaveRest() {
        waiting = []
        next()
    }
    function haveRead() {
        const path = current
        patience.stop()
        current = ""
        hand(path)
        next()
    }
    function hand(path) {
        const kind = probe.kind
        probe.path = ""
        // Signatures are opened where their document is. What is no document either, nobody there
        // can do anything with.
        const isDocument = kind === CertificateFile.SignatureKind
            || kind === CertificateFile.MessageKind
            || kind === CertificateFile.OtherKind && messages.isMessage(path)
            || kind === CertificateFile.OtherKind
            && (documentsFirst || documents.availableMimeTypes.indexOf(Files.mimeType(path)) >= 0)
        if (!isDocument
                && !(documentsFirst && kind === CertificateFile.Unreadable)) {
            imported = path
            importable(path)
        } else if (hasDocument) {
            leftOut(path)
        } else {
            hasDocument = true
            document(path)
        }
    }
}
