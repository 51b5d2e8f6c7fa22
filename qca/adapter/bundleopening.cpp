// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/bundleopening.h"

#include "qca/base/detachedwork.h"
#include "qca/base/regularfile.h"

namespace Trivex {

BundleOpening::BundleOpening(const QString &path, const Secret &password)
    : m_path(path)
    , m_password(password)
{
}

void BundleOpening::start()
{
    startDetached([self = shared_from_this()] { self->run(); });
}

void BundleOpening::run()
{
    FileProblem problem = FileProblem::None;
    const auto contents = readRegularFile(m_path, &problem);
    if (contents)
        m_result = readBundle(*contents, m_password, &m_bundle);
    else if (problem == FileProblem::Unreadable)
        m_result = QCA::ErrorFile;
    // A file that is too large counts as no bundle.
    m_waiter.resolve();
}

} // namespace Trivex
