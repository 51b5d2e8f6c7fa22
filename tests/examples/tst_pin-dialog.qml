// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15

ExampleCase {
    id: test
    example: "pin-dialog"

    function remove(name) {
        const list = part("list");
        tryVerify(function() { return list.count > 0 && list.itemAtIndex(list.count - 1); }, 15000);
        for (let i = 0; i < list.count; ++i) {
            if (list.itemAtIndex(i).certificateName === name)
                list.itemAtIndex(i).remove();
        }
        const dialog = part("pinDialog");
        tryVerify(function() { return dialog.opened; }, 15000);
        // A name comes from strangers, and a title may be taken for rich text.
        compare(dialog.title, "PIN");
        compare(part("pinToken").text, "The PIN of " + backstage.tokenName);
        compare(part("pinToken").textFormat, Text.PlainText);
        return dialog;
    }

    function test_1_left() {
        remove("Ivanov").reject();
        tryCompare(window, "outcome", "not removed", 15000);
        compare(part("list").count, 2);
    }

    function test_2_answered() {
        const dialog = remove("Ivanov");
        type("pin", backstage.pin);
        dialog.accept();
        tryCompare(window, "outcome", "removed", 15000);
        tryCompare(part("list"), "count", 1, 15000);
    }
}
