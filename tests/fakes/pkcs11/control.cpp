// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/control.h"

#include "tests/fakes/pkcs11/names.h"

#include <map>
#include <sstream>

namespace Faulty {
namespace {

using Words = std::vector<std::string>;

const std::map<std::string, Action> actionNames = {
    {"fail", Action::Fail},
    {"fail-after", Action::FailAfter},
    {"delay", Action::Delay},
    {"remove-at", Action::Remove},
    {"kill", Action::Kill},
    {"kill-after", Action::KillAfter},
    {"hold", Action::Hold},
    {"report", Action::Report},
    {"end-sessions-at", Action::EndSessions},
    {"logout-at", Action::Logout},
    {"final-try-at", Action::FinalTry},
};

const std::map<std::string, bool Script::*> stateNames = {
    {"read-only", &Script::readOnly},           {"full", &Script::full},
    {"dead-slots", &Script::deadSlots},         {"locked", &Script::locked},
    {"count-low", &Script::countLow},           {"final-try", &Script::finalTry},
    {"no-login-flag", &Script::noLoginFlag},    {"no-login-state", &Script::noLoginState},
    {"no-pin-flag", &Script::noPinFlag},        {"slots-grow", &Script::slotsGrow},
    {"other-token", &Script::otherToken},       {"no-shortest-pin", &Script::noShortestPin},
    {"to-be-changed", &Script::toBeChanged},    {"officer-final-try", &Script::officerFinalTry},
    {"officer-locked", &Script::officerLocked}, {"same-names", &Script::sameNames},
    {"no-serial", &Script::noSerial},
};

const std::map<std::string, Kind> kindNames = {
    {"general", Kind::General},
    {"slot", Kind::Slot},
    {"session", Kind::Session},
};

const std::set<std::string> gostHabits = {
    "wrapped", "no-digest-parameters", "message-only", "digest-only", "no-digest", "vague"};

std::optional<unsigned long> number(const std::string &text)
{
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stoul(text);
}

bool readTarget(const std::string &word, Rule *rule)
{
    if (word == "any")
        return true;
    const auto kind = kindNames.find(word);
    if (kind != kindNames.end())
        rule->kind = kind->second;
    else
        rule->function = functionByName(word);
    return rule->kind || rule->function;
}

// "3" is the third call, "3+" the third and all after it, "*" every one.
template <typename Counted> bool readCount(std::string word, Counted *rule)
{
    if (word == "*") {
        rule->onwards = true;
        return true;
    }
    if (!word.empty() && word.back() == '+') {
        rule->onwards = true;
        word.pop_back();
    }
    const auto value = number(word);
    if (!value || *value == 0)
        return false;
    rule->first = *value;
    return true;
}

// "7" is that number, "+7" and "-7" are so much more or less than what the real module gives.
bool readReport(const std::string &argument, Rule *rule)
{
    const char sign = argument.empty() ? '\0' : argument.front();
    rule->isChange = sign == '+' || sign == '-';
    const auto value = number(rule->isChange ? argument.substr(1) : argument);
    rule->value = sign == '-' ? 0 - value.value_or(0) : value.value_or(0);
    return value.has_value();
}

bool readArgument(const Words &words, Rule *rule)
{
    const std::string argument = words.size() > 3 ? words[3] : std::string();
    if (rule->action == Action::Delay) {
        const auto value = number(argument);
        rule->milliseconds = value.value_or(0);
        return value.has_value();
    }
    if (rule->action == Action::Report)
        return readReport(argument, rule);
    if (rule->action == Action::Fail || rule->action == Action::FailAfter) {
        const auto value = resultByName(argument);
        rule->result = value.value_or(CKR_OK);
        return value.has_value();
    }
    return words.size() == 3;
}

bool readRule(const Words &words, Action action, Script *script)
{
    Rule rule;
    rule.action = action;
    if (words.size() < 3 || words.size() > 4 || !readTarget(words[1], &rule)
        || !readCount(words[2], &rule) || !readArgument(words, &rule))
        return false;
    script->rules.push_back(rule);
    return true;
}

// "lie TYPE COUNT KIND [SIZE]"
bool readLie(const Words &words, Script *script)
{
    LieRule rule;
    if (words.size() < 4 || words.size() > 5 || !readCount(words[2], &rule))
        return false;
    rule.type = attributeByName(words[1]);
    const auto lie = lieByName(words[3], words.size() > 4 ? words[4] : std::string());
    if (!lie || (!rule.type && words[1] != "any"))
        return false;
    rule.lie = *lie;
    script->lies.push_back(rule);
    return true;
}

bool readRemove(const Words &words, Script *script)
{
    if (words.size() == 1) {
        script->allRemoved = true;
        return true;
    }
    script->removed.insert(words.begin() + 1, words.end());
    return true;
}

bool readSick(const Words &words, Script *script)
{
    script->sick.insert(words.begin() + 1, words.end());
    return words.size() > 1;
}

bool readGost(const Words &words, Script *script)
{
    for (size_t i = 1; i < words.size(); ++i) {
        if (gostHabits.count(words[i]) == 0)
            return false;
        script->gostHabits.insert(words[i]);
    }
    return words.size() > 1;
}

// "without MECHANISM …"
bool readWithout(const Words &words, Script *script)
{
    for (size_t i = 1; i < words.size(); ++i) {
        const auto mechanism = mechanismByName(words[i]);
        if (!mechanism)
            return false;
        script->hidden.insert(*mechanism);
    }
    return words.size() > 1;
}

bool readBroken(const Words &words, Script *script)
{
    const auto result = words.size() == 3 ? resultByName(words[2]) : std::nullopt;
    const auto kind = kindNames.find(words.size() == 3 ? words[1] : std::string());
    if (!result || (kind == kindNames.end() && words[1] != "any"))
        return false;
    script->broken = true;
    if (kind != kindNames.end())
        script->brokenKind = kind->second;
    script->brokenResult = *result;
    return true;
}

// "replug COUNT CALLS"
bool readReplug(const Words &words, Script *script)
{
    const auto count = words.size() == 3 ? number(words[1]) : std::nullopt;
    const auto calls = words.size() == 3 ? number(words[2]) : std::nullopt;
    script->removals = count.value_or(0);
    script->removalCalls = calls.value_or(0);
    return script->removals > 0 && script->removalCalls > 0;
}

bool readSetting(const Words &words, Script *script)
{
    if (words[0] == "pin-pad" && (words.size() == 2 || words.size() == 3)) {
        script->pinPad = words[1];
        script->newOnPinPad = words.size() == 3 ? words[2] : std::string();
        return true;
    }
    if (words.size() != 2)
        return false;
    const auto value = number(words[1]);
    if (!value)
        return false;
    if (words[0] == "slot-count") {
        script->slotCount = *value;
        return true;
    }
    if (words[0] == "more-slots") {
        script->moreSlots = *value;
        return true;
    }
    (words[0] == "tries" ? script->tries : script->slotLimit) = *value;
    return true;
}

bool readLine(const Words &words, Script *script)
{
    const auto action = actionNames.find(words[0]);
    if (action != actionNames.end())
        return readRule(words, action->second, script);
    const auto state = stateNames.find(words[0]);
    if (state != stateNames.end()) {
        script->*(state->second) = true;
        return words.size() == 1;
    }
    static const std::map<std::string, bool (*)(const Words &, Script *)> readers = {
        {"lie", readLie},       {"remove", readRemove},   {"gost", readGost},
        {"broken", readBroken}, {"without", readWithout}, {"sick", readSick},
        {"replug", readReplug},
    };
    const auto reader = readers.find(words[0]);
    if (reader != readers.end())
        return reader->second(words, script);
    static const std::set<std::string> settings = {"tries", "slots", "pin-pad", "slot-count",
                                                   "more-slots"};
    if (settings.count(words[0]) > 0)
        return readSetting(words, script);
    return false;
}

} // namespace

bool Rule::matches(Function call) const
{
    if (function)
        return *function == call;
    return !kind || *kind == functionKind(call);
}

bool Rule::hits(Function call)
{
    if (!matches(call))
        return false;
    ++seen;
    return onwards ? seen >= first : seen == first;
}

Script parseScript(const std::string &text)
{
    Script script;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream stream(line.substr(0, line.find('#')));
        Words words;
        for (std::string word; stream >> word;)
            words.push_back(word);
        if (!words.empty() && !readLine(words, &script))
            script.errors.push_back(line);
    }
    return script;
}

} // namespace Faulty
