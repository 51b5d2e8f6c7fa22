// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>

namespace TrivexTest {

/// A list model for `QAbstractItemModelTester`: the models themselves count their rows whatever
/// the parent is, which the tester takes for a tree.
template <typename Model> class Flat : public Model {
public:
    using Model::Model;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : Model::rowCount(parent);
    }
};

} // namespace TrivexTest
