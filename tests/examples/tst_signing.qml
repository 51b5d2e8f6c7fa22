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

    function test_1_strangersNames() {
        const keys = part("keys");
        compare(keys.contentItem.text, keys.currentText);
        compare(keys.contentItem.textFormat, Text.PlainText);
        keys.popup.open();
        const rows = keys.popup.contentItem;
        tryVerify(function() { return rows.itemAtIndex(1); }, 15000);
        for (let i = 0; i < keys.count; ++i) {
            const label = rows.itemAtIndex(i).contentItem;
            compare(label.text, keys.textAt(i));
            compare(label.textFormat, Text.PlainText);
        }
        keys.popup.close();
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
