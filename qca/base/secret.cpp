// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/secret.h"

#include <QtCrypto>

#include <algorithm>
#include <cstring>
#include <utility>

namespace Trivex {

Secret::Secret(int size)
    : m_bytes(size > 0 ? std::make_unique<char[]>(size_t(size)) : nullptr)
    , m_size(std::max(size, 0))
    , m_room(m_size)
{
}

Secret::Secret(const QCA::SecureArray &bytes)
    : Secret(bytes.size())
{
    std::copy_n(bytes.constData(), m_size, m_bytes.get());
}

Secret::~Secret()
{
    if (m_bytes)
        explicit_bzero(m_bytes.get(), size_t(m_room));
}

Secret::Secret(const Secret &other)
    : Secret(other.m_size)
{
    std::copy_n(other.m_bytes.get(), m_size, m_bytes.get());
}

Secret::Secret(Secret &&other) noexcept
    : m_bytes(std::move(other.m_bytes))
    , m_size(std::exchange(other.m_size, 0))
    , m_room(std::exchange(other.m_room, 0))
{
}

Secret &Secret::operator=(Secret other) noexcept
{
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_size, other.m_size);
    std::swap(m_room, other.m_room);
    return *this;
}

void Secret::truncate(int size)
{
    m_size = std::clamp(size, 0, m_size);
}

QByteArray Secret::toByteArray() const
{
    return QByteArray(m_bytes.get(), m_size);
}

QCA::SecureArray Secret::toSecureArray() const
{
    QCA::SecureArray bytes(m_size);
    std::copy_n(m_bytes.get(), m_size, bytes.data());
    return bytes;
}

} // namespace Trivex
