// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/requestfiles.h"

#include "qca/base/filenames.h"

#include <QDir>
#include <QFileInfo>
#include <QRegExp>
#include <QStandardPaths>

namespace Trivex {

namespace {

/// A base name whose end may hold a number in brackets.
class NumberedName {
public:
    NumberedName(const QString &base, const QString &suffix)
        : m_base(base)
        , m_suffix(suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix)
    {
        m_position = m_brackets.indexIn(m_base);
        m_number = m_position < 0 ? 1 : qMax(1, m_brackets.cap(1).toInt());
    }

    /// The next name to try.
    QString next()
    {
        const QString number = QStringLiteral("(%1)").arg(m_number++);
        m_base.replace(m_brackets, number);
        if (m_position <= 0)
            m_base += QLatin1Char(' ') + number;
        m_position = m_brackets.indexIn(m_base);
        fit();
        return m_base + m_suffix;
    }

private:
    /// Shortens what stands before the number where the name got too long.
    void fit()
    {
        const bool isSpaced = m_position > 0 && m_base.at(m_position - 1) == QLatin1Char(' ');
        const int tail = isSpaced ? m_position - 1 : m_position;
        const QString name = safeFileName(m_base.left(tail), m_base.mid(tail) + m_suffix);
        m_base = name.left(name.size() - m_suffix.size());
        m_position = m_brackets.indexIn(m_base);
    }

    QRegExp m_brackets{QStringLiteral("\\(([^)]*)[^(]*$")};
    QString m_base;
    QString m_suffix;
    int m_position;
    qint64 m_number;
};

} // namespace

const QString &requestDirectory()
{
    static const QString directory = QStandardPaths::writableLocation(QStandardPaths::HomeLocation)
        + QStringLiteral("/CertificateRequest/");
    return directory;
}

const QString &requestExtension()
{
    static const QString extension = QStringLiteral("csr");
    return extension;
}

QString requestFileName(const QString &commonName)
{
    return safeFileName(commonName, QLatin1Char('.') + requestExtension(),
                        QStringLiteral("request"));
}

QString freePath(const QString &path, const std::function<bool(const QString &)> &isTaken)
{
    const QFileInfo info(path);
    const QString prefix = info.absoluteDir().path() + QDir::separator();
    NumberedName name(info.completeBaseName(), info.suffix());
    QString candidate = path;
    while (isTaken(candidate))
        candidate = prefix + name.next();
    return candidate;
}

} // namespace Trivex
