// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/dispatch.h"

#include "tests/fakes/pkcs11/names.h"
#include "tests/fakes/pkcs11/spylog.h"

#include <chrono>
#include <csignal>
#include <sstream>
#include <thread>

namespace Faulty {

void before(Function function, const Verdict &verdict)
{
    if (verdict.milliseconds > 0) {
        writeLog(std::string("waits ") + functionName(function));
        // The pause that the order asks for.
        std::this_thread::sleep_for(std::chrono::milliseconds(verdict.milliseconds));
    }
    if (verdict.hold) {
        writeLog(std::string("waits ") + functionName(function));
        Device::instance().awaitControl(*verdict.hold);
    }
    if (verdict.kill)
        std::raise(SIGKILL);
}

void after(const Verdict &verdict)
{
    if (verdict.killAfter)
        std::raise(SIGKILL);
}

void logCall(Function function, unsigned long subject, CK_RV result, const std::string &detail)
{
    static const char *const subjects[] = {"", " slot=", " session="};
    std::string line = functionName(function) + std::string(" ") + resultName(result);
    const Kind kind = functionKind(function);
    if (kind != Kind::General)
        line += subjects[static_cast<int>(kind)] + std::to_string(subject);
    writeLog(line + detail);
}

std::string pinDetail(const CK_UTF8CHAR *pin, CK_ULONG length)
{
    if (!pin)
        return " pin=none";
    return length == 0 ? " pin=empty" : " pin=given";
}

std::string loginDetail(CK_USER_TYPE user, const CK_UTF8CHAR *pin, CK_ULONG length)
{
    const char *const who = user == CKU_CONTEXT_SPECIFIC ? " user=context"
        : user == CKU_SO                                 ? " user=officer"
                                                         : "";
    return who + pinDetail(pin, length);
}

std::string reservedDetail(const void *given)
{
    const auto *arguments = static_cast<const CK_C_INITIALIZE_ARGS *>(given);
    if (!arguments || !arguments->pReserved)
        return {};
    return std::string(" reserved=") + static_cast<const char *>(arguments->pReserved);
}

std::string attributesDetail(const CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    std::ostringstream detail;
    detail << " attributes=" << std::hex;
    for (CK_ULONG i = 0; i < count; ++i)
        detail << (i ? "," : "") << "0x" << attributes[i].type;
    return detail.str();
}

} // namespace Faulty
