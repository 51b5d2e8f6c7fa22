// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// Under this name the object of a saved request carries the whole path of its file (a QString),
/// for code that knows such objects only through their properties. A dynamic property: the
/// interface that QML sees has no such path.
constexpr char requestFileProperty[] = "_trivex_requestFile";

} // namespace Trivex
