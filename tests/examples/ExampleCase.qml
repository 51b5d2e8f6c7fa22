// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15

// Opens the window of an example as it stands in the sources, and works it by hand.
TestCase {
    id: test
    property string example
    property QtObject window: null

    property Connections answer: Connections {
        property string pin
        target: null
        function onOpened() {
            target = null;
            test.type("pinField", pin);
            test.mouseClick(test.part("pinAccept"));
        }
    }

    name: "Example"
    when: windowShown

    function initTestCase() {
        const file = Qt.resolvedUrl("../../examples/" + example + "/main.qml");
        const component = Qt.createComponent(file);
        compare(component.errorString(), "");
        window = component.createObject(null);
        verify(window);
        window.requestActivate();
        tryVerify(function() { return window.active; });
    }

    function cleanupTestCase() {
        window.close();
    }

    function part(objectName) {
        const found = findChild(window, objectName);
        verify(found, "no " + objectName);
        return found;
    }

    function type(objectName, text) {
        const field = part(objectName);
        field.text = "";
        field.forceActiveFocus(Qt.OtherFocusReason);
        tryVerify(function() { return field.activeFocus; });
        for (let i = 0; i < text.length; ++i)
            keyClick(text[i]);
        compare(field.text, text);
    }

    function press(objectName) {
        const button = part(objectName);
        tryVerify(function() { return button.enabled && button.visible; }, 15000);
        mouseClick(button);
    }

    /// Answers the PIN dialog of the controls when it opens: a signature is waited for in an event
    /// loop of its own, and a test that waited for the dialog would wait inside of that.
    function answerPin(dialogName, pin) {
        answer.pin = pin;
        answer.target = part(dialogName);
    }

    /// Waits until the token is among the choices of `chooser`, and chooses it.
    function chooseToken(chooser) {
        tryVerify(function() { return chooser.usable; }, 15000);
        compare(chooser.tokenName, backstage.tokenName);
    }
}
