// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0

// Runs the acts one after the other. An act is a generator: it yields {until, within} to wait for a
// condition, and gets back whether the condition came true within that many milliseconds.
Item {
    id: tour

    property var running: null
    property var waiting: null
    property double since: 0
    // A call into the module may wait for the token in an event loop of its own, in which the timer
    // goes on.
    property bool inside: false

    function* acts() {
        yield* reading.play()
        yield* writing.play()
        yield* files.play()
    }

    function resume(answer) {
        let next
        inside = true
        try {
            next = running.next(answer)
        } catch (error) {
            toolbox.step(false, "the tour", error + " at " + error.fileName + ":" + error.lineNumber)
            next = {done: true}
        }
        inside = false
        if (next.done) {
            timer.stop()
            Qt.quit()
            return
        }
        waiting = next.value
        since = Date.now()
    }

    function poll() {
        if (inside)
            return
        const late = Date.now() - since > waiting.within
        if (waiting.until())
            resume(true)
        else if (late)
            resume(false)
    }

    Component.onCompleted: {
        running = acts()
        resume()
        timer.start()
    }

    Timer {
        id: timer
        interval: 20
        repeat: true
        onTriggered: tour.poll()
    }

    Stores { id: stores }
    ReadingAct { id: reading; stores: stores }
    WritingAct { id: writing; stores: stores }
    FilesAct { id: files; stores: stores }
}
