// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/bundleopening.h"

#include "qca/base/processend.h"
#include "qca/base/regularfile.h"

#include <system_error>
#include <thread>

namespace Trivex {

BundleOpening::BundleOpening(const QString &path, const Secret &password)
    : m_path(path)
    , m_password(password)
{
}

void BundleOpening::start()
{
    if (ProcessEnd::hasBegun())
        return;
    ProcessEnd::expect();
    ProcessEnd::watchThisThread();
    try {
        std::thread([self = shared_from_this()]() mutable {
            const ForeignCall libcrypto;
            self->run();
            // It goes before the call ends, after which the process may be gone.
            self.reset();
        }).detach();
    } catch (const std::system_error &) {
        run();
    }
}

void BundleOpening::run()
{
    FileProblem problem = FileProblem::None;
    const auto contents = readRegularFile(m_path, &problem);
    if (contents)
        m_result = readBundle(*contents, m_password, &m_bundle);
    else if (problem == FileProblem::Unreadable)
        m_result = QCA::ErrorFile;
    // What is too large is no bundle.
    m_waiter.resolve();
}

} // namespace Trivex
