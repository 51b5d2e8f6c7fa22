// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A script of questions: asked on threads, answered, declined, withdrawn, refused, with handlers
// that come and go. Everybody who asks gets one answer, and no other than one that was given.
#include "fuzz/script.h"
#include "fuzz/target.h"
#include "qca/questions/asker.h"
#include "qca/questions/cancellation.h"
#include "qca/questions/eventhandler.h"
#include "qca/questions/openquestions.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace Trivex;

namespace {

constexpr int MostSteps = 24;
constexpr int MostAskers = 6;

/// Somebody on a thread who wants a PIN.
class Asking {
public:
    Asking(const QuestionInfo &question, CancellationPtr cancellation)
        : m_cancellation(std::move(cancellation))
        , m_thread([this, question] {
            const QCA::KeyStoreInfo store(QCA::KeyStore::SmartCard, question.keyStoreId,
                                          question.tokenName);
            const Reply reply = ask(question, store, {}, m_cancellation);
            m_answer = reply.password.toByteArray();
            m_isAccepted = reply.accepted;
            m_isOver = true;
        })
    {
    }
    ~Asking()
    {
        m_thread.join();
        TrivexFuzz::check(!m_isAccepted || m_answer == "1234", "an accepted answer is one of ours");
        TrivexFuzz::check(m_isAccepted || m_answer.isEmpty(), "a declined question has no answer");
    }
    bool isOver() const { return m_isOver; }
    void cancel() { m_cancellation->request(); }

private:
    const CancellationPtr m_cancellation;
    QByteArray m_answer;
    bool m_isAccepted = false;
    std::atomic_bool m_isOver{false};
    std::thread m_thread;
};

/// Somebody who is asked, and does what the script says, at once or later.
class Person {
public:
    explicit Person(TrivexFuzz::Script *script)
        : m_script(script)
    {
        QObject::connect(&m_handler, &QCA::EventHandler::eventReady, &m_handler,
                         [this](int id, const QCA::Event &event) { hear(id, event); });
        m_handler.start();
    }
    void act()
    {
        for (const int id : std::exchange(m_waiting, {}))
            answer(id);
    }

private:
    void hear(int id, const QCA::Event &event)
    {
        if (m_handler.isForAnother(event))
            m_handler.reject(id);
        else if (m_script->flag())
            answer(id);
        else
            m_waiting.push_back(id);
    }
    void answer(int id)
    {
        if (m_script->below(3) == 0)
            m_handler.reject(id);
        else
            m_handler.submitPassword(id, QCA::SecureArray("1234"));
    }

    TrivexFuzz::Script *m_script;
    std::vector<int> m_waiting;
    EventHandler m_handler;
};

class Scene {
public:
    explicit Scene(const QByteArray &input)
        : m_script(input)
    {
        for (OperationOwnerPtr &owner : m_owners)
            owner = std::make_shared<OperationOwner>();
    }

    void play()
    {
        for (int i = 0; i < MostSteps && !m_script.atEnd(); ++i) {
            step();
            QCoreApplication::processEvents();
        }
        while (!isOver()) {
            cancelQuestions();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
    }

private:
    static QString storeId(int number) { return QStringLiteral("token-%1").arg(number); }

    void beginToAsk()
    {
        if (m_askers.size() >= MostAskers)
            return;
        QuestionInfo question;
        question.keyStoreId = storeId(m_script.below(2));
        question.purpose = Purpose(m_script.below(6));
        question.needsTypedPin = m_script.flag();
        question.owner = m_owners[size_t(m_script.below(2))];
        m_askers.push_back(std::make_unique<Asking>(question, std::make_shared<Cancellation>()));
    }

    void step()
    {
        std::unique_ptr<Person> &person = m_persons[size_t(m_script.below(2))];
        switch (m_script.below(8)) {
        case 0:
        case 1:
            beginToAsk();
            break;
        case 2:
            person = std::make_unique<Person>(&m_script);
            break;
        case 3:
            person.reset();
            break;
        case 4:
            if (person)
                person->act();
            break;
        case 5:
            cancelQuestions(m_script.flag() ? storeId(m_script.below(2)) : QString());
            break;
        case 6:
            if (!m_askers.empty())
                m_askers[size_t(m_script.below(int(m_askers.size())))]->cancel();
            break;
        default:
            refuseQuestions(m_owners[size_t(m_script.below(2))]);
            break;
        }
    }

    bool isOver() const
    {
        return std::all_of(m_askers.begin(), m_askers.end(),
                           [](const auto &asker) { return asker->isOver(); });
    }

    TrivexFuzz::Script m_script;
    std::array<OperationOwnerPtr, 2> m_owners;
    std::array<std::unique_ptr<Person>, 2> m_persons;
    std::vector<std::unique_ptr<Asking>> m_askers;
};

} // namespace

void TrivexFuzz::take(const QByteArray &input)
{
    Scene(input).play();
}
