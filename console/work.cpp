// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/work.h"

#include "console/listing.h"
#include "console/report.h"
#include "console/showing.h"
#include "console/signing.h"
#include "console/verifying.h"

namespace Trivex {

int carryOut(const Order &order)
{
    if (!order.problem.isEmpty()) {
        complain(order.problem);
        return WrongUse;
    }
    switch (order.kind) {
    case Order::List:
        return list(order.isJson);
    case Order::Show:
        return show(order.files, order.passwordFile, order.isJson);
    case Order::Sign:
        return sign(order);
    case Order::Verify:
        return verify(order);
    case Order::Window:
        break;
    }
    //% "There is no display for the window here. See --help for what works without one."
    complain(qtTrId("trivex-console-no-display"));
    return Failed;
}

} // namespace Trivex
