// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

ExampleCase {
    example: "request"

    function make(name, pin) {
        chooseToken(part("token"));
        type("commonName", name);
        type("pin", pin);
        press("make");
        tryVerify(function() { return !window.busy; }, 60000);
    }

    function test_1_wrongPin() {
        make("Petrov", backstage.pin + "9");
        verify(window.outcome.length > 0 && window.outcome.indexOf("saved") < 0, window.outcome);
    }

    function test_2_made() {
        make("Petrov", backstage.pin);
        const file = backstage.requestDirectory + "Petrov.csr";
        compare(window.outcome, "saved " + file);
        verify(backstage.requestSubject(file).indexOf("CN=Petrov") >= 0);
    }
}
