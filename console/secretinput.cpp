// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/secretinput.h"

#include "qca/base/descriptor.h"
#include "qca/base/regularfile.h"
#include "qca/base/securedtext.h"

#include <QTextCodec>

#include <algorithm>
#include <csignal>
#include <iterator>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr int LongestSecret = 4096;

// For who is interrupted while the terminal is quiet: a signal's handler knows nothing else.
int s_terminal = -1;
termios s_before = {};

void restoreAndEnd(int number)
{
    tcsetattr(s_terminal, TCSAFLUSH, &s_before);
    signal(number, SIG_DFL);
    raise(number);
}

constexpr int Interruptions[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// The terminal without an echo, as long as it lives, and not longer than the process does.
class QuietTerminal {
public:
    explicit QuietTerminal(int terminal)
    {
        if (tcgetattr(terminal, &s_before) != 0)
            return;
        s_terminal = terminal;
        for (std::size_t i = 0; i < std::size(Interruptions); ++i)
            m_handlers[i] = signal(Interruptions[i], restoreAndEnd);
        termios quiet = s_before;
        quiet.c_lflag &= ~tcflag_t(ECHO);
        m_valid = tcsetattr(terminal, TCSAFLUSH, &quiet) == 0;
    }
    ~QuietTerminal()
    {
        if (s_terminal < 0)
            return;
        tcsetattr(s_terminal, TCSAFLUSH, &s_before);
        for (std::size_t i = 0; i < std::size(Interruptions); ++i)
            signal(Interruptions[i], m_handlers[i]);
        s_terminal = -1;
    }
    Q_DISABLE_COPY(QuietTerminal)
    bool isValid() const { return m_valid; }

private:
    sighandler_t m_handlers[std::size(Interruptions)] = {};
    bool m_valid = false;
};

void print(int terminal, const QByteArray &text)
{
    // Nothing can be done about a terminal that shows nothing.
    const auto written = write(terminal, text.constData(), size_t(text.size()));
    Q_UNUSED(written)
}

/// A line, without its end; nothing at the end of the input.
std::optional<QCA::SecureArray> readLine(int terminal)
{
    QCA::SecureArray line(LongestSecret);
    int length = 0;
    while (length < LongestSecret) {
        char *const next = line.data() + length;
        if (read(terminal, next, 1) != 1)
            return {};
        if (*next == '\n')
            break;
        ++length;
    }
    line.resize(length);
    return line;
}

/// Tokens and bundles take UTF-8; a terminal or an editor may write in the encoding of the locale.
/// A text in such an encoding looks like UTF-8 by accident only where it is very short and odd.
QCA::SecureArray inUtf8(const QCA::SecureArray &secret)
{
    const auto decode = [&](const QTextCodec *codec) -> std::optional<QString> {
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        QString text = codec->toUnicode(secret.constData(), secret.size(), &state);
        if (state.invalidChars == 0 && state.remainingChars == 0)
            return text;
        text.fill(QChar());
        return {};
    };
    auto text = decode(QTextCodec::codecForName("UTF-8"));
    const bool isUtf8 = text.has_value();
    if (!isUtf8)
        text = decode(QTextCodec::codecForLocale());
    if (!text)
        return secret;
    const QCA::SecureArray result = isUtf8 ? secret : securedText(text->toUtf8());
    text->fill(QChar());
    return result;
}

} // namespace

std::optional<QCA::SecureArray> typedSecret(const QString &question)
{
    const Descriptor terminal(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!terminal.isOpen())
        return {};
    const QuietTerminal quiet(terminal.get());
    if (!quiet.isValid())
        return {};
    print(terminal.get(), question.toUtf8() + ' ');
    auto secret = readLine(terminal.get());
    print(terminal.get(), "\n");
    if (secret)
        secret = inUtf8(*secret);
    return secret;
}

std::optional<QCA::SecureArray> secretFromFile(const QString &path)
{
    auto bytes = readRegularFile(path);
    if (!bytes)
        return {};
    int end = bytes->indexOf('\n');
    if (end < 0)
        end = bytes->size();
    if (end > 0 && bytes->at(end - 1) == '\r')
        --end;
    QCA::SecureArray secret(end);
    std::copy_n(bytes->constData(), end, secret.data());
    bytes->fill(0);
    return inUtf8(secret);
}

} // namespace Trivex
