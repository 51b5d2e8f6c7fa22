// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

ExampleCase {
    example: "import"

    function test_1_wrongPassword() {
        type("path", backstage.makeBundle("Sidorov", "secret"));
        type("password", "wrong");
        press("open");
        wait(0);
        tryVerify(function() { return part("open").enabled; }, 15000);
        verify(!part("import").enabled);
    }

    function test_2_imported() {
        type("password", "secret");
        press("open");
        chooseToken(part("token"));
        answerPin("pinPrompt", backstage.pin);
        press("import");
        verify(window.writing);
        tryCompare(window, "outcome", "imported", 30000);
    }
}
