// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace TrivexTest {

/// The number by which a KeyStoreModel chooses the location of that store; -1 while it is not
/// there. It is found by name, because the locations stand in the order in which their stores came.
template <class Model> int locationOf(Model &model, const QString &store)
{
    const auto *locations = model.certLocationModel();
    for (int i = 0; i < locations->rowCount(); ++i) {
        if (locations->rowAt(i).type == store)
            return i;
    }
    return -1;
}

} // namespace TrivexTest
