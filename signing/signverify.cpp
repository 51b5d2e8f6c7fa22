// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/signverify.h"

#include "certificates/certificate.h"
#include "certificates/keystoreentry.h"
#include "qca/adapter/entries.h"
#include "qca/base/pause.h"
#include "qca/base/regularfile.h"
#include "qca/base/securedtext.h"
#include "qca/questions/cancellationscope.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/putquestion.h"
#include "qca/questions/question.h"
#include "qca/questions/questionscope.h"
#include "qca/tokens/tokens.h"
#include "signing/mappedfile.h"
#include "signing/rawsignature.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QMetaMethod>
#include <QQmlEngine>
#include <QTimer>

#include <utility>

namespace {

constexpr Trivex::Pause SignDelay(3000);
constexpr Trivex::Pause VerifyDelay(1000);

QCA::KeyBundle bundleOf(const KeyStoreEntry &entry)
{
    const QCA::KeyStoreEntry *data = entry.data();
    return data ? Trivex::entryKeyBundle(*data) : QCA::KeyBundle();
}

Certificate *keptByCpp(Certificate *certificate)
{
    if (certificate)
        QQmlEngine::setObjectOwnership(certificate, QQmlEngine::CppOwnership);
    return certificate;
}

} // namespace

SignVerify::SignVerify(QObject *parent)
    : QObject(parent)
    , m_eventHandler(this)
    , m_ceritficate(keptByCpp(new Certificate(this)))
{
    connect(&m_eventHandler, &QCA::EventHandler::eventReady, this, &SignVerify::eventReady);
    connect(&m_questions, &Trivex::PinQuestions::put, this, &SignVerify::askForPin);
    connect(&m_questions, &Trivex::PinQuestions::answered, &m_keptPin,
            &Trivex::KeptPin::keepAnswer);
    m_eventHandler.start();
}

SignVerify::~SignVerify()
{
    delete m_ceritficate;
}

Certificate *SignVerify::ceritficate() const
{
    return m_ceritficate;
}

void SignVerify::setError(int error)
{
    if (error == m_error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}

void SignVerify::setCeritficate(Certificate *ceritficate)
{
    if (ceritficate == m_ceritficate)
        return;
    const QPointer<Certificate> previous = std::exchange(m_ceritficate, keptByCpp(ceritficate));
    delete previous;
    Q_EMIT ceritficateChanged();
}

void SignVerify::sign(const QByteArray &rawDataFile, const QString &filePathSig, KeyStoreEntry *key)
{
    m_toSign.push_back({rawDataFile, filePathSig, key});
    schedule(SignDelay.milliseconds(), Qt::CoarseTimer, [this] { startSigning(); });
}

void SignVerify::verify(const QByteArray &rawDataFile, const QString &filePathSig,
                        KeyStoreEntry *key)
{
    m_toVerify.push_back({rawDataFile, filePathSig, key});
    schedule(VerifyDelay.milliseconds(), Qt::PreciseTimer,
             [this] { runVerify(takeFirst(m_toVerify)); });
}

// Timers that were started together may fire in any order. So the work takes the oldest job, not
// the one whose call started this timer: that job has waited at least as long.
SignVerify::Job SignVerify::takeFirst(std::deque<Job> &jobs)
{
    const Job job = jobs.front();
    jobs.pop_front();
    return job;
}

void SignVerify::schedule(int milliseconds, Qt::TimerType type, std::function<void()> work)
{
    QElapsedTimer clock;
    clock.start();
    QTimer::singleShot(milliseconds, type, this, [this, milliseconds, clock, work] {
        // A coarse timer may fire up to five per cent early.
        const int left = milliseconds - int(clock.elapsed());
        if (left > 0)
            schedule(left, Qt::PreciseTimer, work);
        else
            work();
    });
}

// Signing runs an event loop while the token works, so the next job's timer can fire meanwhile.
// That job has to wait: the PIN typed for the first is not known to be right yet, and must not be
// tried a second time.
void SignVerify::startSigning()
{
    m_signQueue.push_back(takeFirst(m_toSign));
    if (!m_signing)
        signQueued();
}

void SignVerify::signQueued()
{
    const QPointer<SignVerify> self(this);
    m_signing = true;
    while (self && !m_signQueue.empty()) {
        const Job job = m_signQueue.front();
        m_signQueue.pop_front();
        runSign(job);
    }
    if (self)
        m_signing = false;
    Trivex::MappedFile::releaseUnused();
}

bool SignVerify::prepare(const QCA::PrivateKey &key, const QByteArray &data, const char *activity,
                         QByteArray *text)
{
    *text = Trivex::signedText(data);
    if (text->isEmpty()) {
        qDebug("Hash calculation error during %s.", activity);
        setError(ErrorVerify);
        return false;
    }
    const QPointer<SignVerify> self(this);
    if (!Trivex::canSignRaw(key))
        Trivex::reportWrongKeyKind(key);
    return self;
}

void SignVerify::runSign(const Job &job)
{
    if (!job.key) {
        setError(ErrorSign);
        return;
    }
    const QCA::PrivateKey key = bundleOf(*job.key).privateKey();
    if (key.isNull()) {
        setError(ErrorSign);
        return;
    }
    QByteArray text;
    if (!prepare(key, job.data, "signing", &text))
        return;
    const QPointer<SignVerify> self(this);
    QByteArray signature;
    {
        m_task = std::make_shared<Trivex::Cancellation>();
        const Trivex::QuestionScope scope(&m_eventHandler);
        const Trivex::CancellationScope taskScope(m_task);
        signature = Trivex::rawSignature(key, text);
    }
    if (self)
        finishSigning(job.path, signature);
}

void SignVerify::finishSigning(const QString &path, const QByteArray &signature)
{
    if (signature.isEmpty()) {
        qDebug("Error sign");
        m_keptPin.forget();
        setError(ErrorSign);
        return;
    }
    if (!Trivex::writeFile(path, signature))
        qWarning() << "Signature file" << path << "not written";
    Q_EMIT signSuccess();
}

void SignVerify::runVerify(const Job &job)
{
    if (!job.key) {
        setError(ErrorVerify);
        return;
    }
    const std::optional<QByteArray> signature = Trivex::readSignature(job.path);
    if (!signature) {
        qWarning("could not open CMS file");
        setError(ErrorNotFoundCmsFile);
        return;
    }
    const QCA::KeyBundle bundle = bundleOf(*job.key);
    const QCA::PrivateKey key = bundle.privateKey();
    if (key.isNull()) {
        setError(ErrorVerify);
        return;
    }
    QByteArray text;
    if (!prepare(key, job.data, "verification", &text))
        return;
    const bool valid = Trivex::isRawSignatureValid(key, text, *signature);
    finishVerifying(valid, bundle.certificateChain());
}

void SignVerify::finishVerifying(bool valid, const QCA::CertificateChain &chain)
{
    if (!valid) {
        qDebug("Error verify");
        setError(ErrorVerify);
        return;
    }
    const QPointer<SignVerify> self(this);
    if (!chain.isEmpty())
        setCeritficate(new Certificate(chain.first()));
    if (self)
        Q_EMIT verifySuccess();
}

void SignVerify::eventReady(int id, QCA::Event e)
{
    if (e.isNull() || Trivex::questionKind(e) != Trivex::PasswordQuestion
        || m_eventHandler.isForAnother(e)) {
        m_eventHandler.reject(id);
        return;
    }
    const std::optional<Trivex::QuestionInfo> info = Trivex::questionInfo(e);
    const QCA::SecureArray kept = m_keptPin.answerFor(info);
    if (kept.isEmpty())
        m_questions.add(id, info);
    else
        m_eventHandler.submitPassword(id, kept);
}

void SignVerify::askForPin(const std::optional<Trivex::QuestionInfo> &question)
{
    // Our own providers wait as long as it takes: for ever, if there is nobody to ask.
    if (question && !isSignalConnected(QMetaMethod::fromSignal(&SignVerify::getPin)))
        m_questions.reject();
    else
        putToPerson(question);
}

void SignVerify::putToPerson(const std::optional<Trivex::QuestionInfo> &question)
{
    const Trivex::PutQuestion put(question);
    Q_EMIT getPin();
}

void SignVerify::pinRejected()
{
    m_questions.reject();
}

void SignVerify::pinAccepted(const QString &pin)
{
    const QCA::SecureArray secure = Trivex::securedText(pin.toLocal8Bit());
    if (m_questions.isEmpty())
        m_keptPin.keep(secure);
    else
        m_questions.accept(secure);
}
