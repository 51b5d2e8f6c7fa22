// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

#include <deque>
#include <memory>

class Certificate;

/// The certificate objects that were read last and that nobody else has: whoever reads a row is
/// mostly not the only one, and a certificate is costly to decode. GUI thread only.
class RecentCertificates {
public:
    RecentCertificates();
    ~RecentCertificates();

    /// The certificate of `entry`, made where it is not among them.
    std::shared_ptr<Certificate> of(const QCA::KeyStoreEntry &entry);
    /// Lets go of that of `entry`, or of all.
    void forget(const QCA::KeyStoreEntry &entry);
    void clear();

private:
    struct One {
        QCA::KeyStoreEntry entry; ///< kept, so that no other one can have its address
        std::shared_ptr<Certificate> certificate;
    };
    /// More than come in one turn of the event loop.
    static constexpr size_t Most = 128;

    std::deque<One>::iterator find(const QCA::KeyStoreEntry &entry);

    std::deque<One> m_all;
};
