// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

ExampleCase {
    example: "signing"

    function test_1_signed() {
        type("path", backstage.writeFile("letter.txt", "Dear reader"));
        tryVerify(function() { return part("keys").count === 2; }, 15000);
        answerPin("pinDialog", backstage.pin);
        press("sign");
        tryCompare(window, "outcome", "signed", 15000);
        compare(backstage.fileSize(window.signature), 256);
    }

    function test_2_verified() {
        press("verify");
        tryCompare(window, "outcome", "the signature is good", 15000);
    }

    function test_3_changed() {
        backstage.writeFile("letter.txt", "Dear Reader");
        type("path", "");
        type("path", backstage.directory + "/letter.txt");
        press("verify");
        tryVerify(function() { return window.outcome.indexOf("failed") === 0; }, 15000);
    }
}
