// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/work.h"

#include "console/listing.h"
#include "console/report.h"
#include "console/showing.h"
#include "console/signing.h"
#include "console/verifying.h"
#include "qca/describe/words.h"

#include <QLocale>

#include <clocale>
#include <cstdlib>

#include <unistd.h>

namespace Trivex {

namespace {

ExitCode work(const Order &order, const Patience &patience)
{
    switch (order.kind) {
    case Order::List:
        return list(order.isJson, patience);
    case Order::Show:
        return show(order.files, order.passwordFile, order.isJson);
    case Order::Sign:
        return sign(order, patience);
    case Order::Verify:
        return verify(order, patience);
    case Order::Window:
        break;
    }
    //% "There is no display for the window here. See --help for what works without one."
    complain(qtTrId("trivex-console-no-display"));
    return Failed;
}

/// `code`, or that of a failure where what was said got lost.
ExitCode told(ExitCode code)
{
    const int error = lostAnswer();
    if (error == 0)
        return code;
    //% "The answer could not be written: %1"
    complain(qtTrId("trivex-console-lost-answer").arg(qt_error_string(error)));
    // A verdict that is worse stays.
    return code == Done ? Failed : code;
}

} // namespace

int carryOut(const Order &order, const Patience &patience)
{
    if (!order.problem.isEmpty()) {
        complain(order.problem);
        return WrongUse;
    }
    return told(work(order, patience));
}

void heedLostAnswers()
{
    std::atexit([] {
        if (told(Done) != Done)
            _exit(Failed);
    });
}

void speakToPrograms()
{
    // Catalogues are loaded for it, and sizes written.
    QLocale::setDefault(QLocale::c());
    // What the system says of its errors.
    setlocale(LC_MESSAGES, "C");
    writeTimesForPrograms();
}

} // namespace Trivex
