// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

ExampleCase {
    example: "list"

    function test_rows() {
        const list = part("list");
        tryCompare(list, "count", 2, 15000);
        // The rows are there before what shows them.
        tryVerify(() => list.itemAtIndex(0) && list.itemAtIndex(1));
        const texts = [list.itemAtIndex(0).text, list.itemAtIndex(1).text].sort();
        compare(texts, ["Ivanov, of Test Root", "Petrova, of Test Root"]);
    }
}
