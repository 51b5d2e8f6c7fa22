// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/derivationbudget.h"

#include "qca/base/bounds.h"
#include "qca/keys/algorithmparameters.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

/// Larger than every bound.
constexpr qint64 Endless = MaxBundleIterations + 1;

qint64 numberOf(const ASN1_INTEGER *integer)
{
    int64_t value = 0;
    if (!integer)
        return 1;
    const bool isSmall = ASN1_INTEGER_get_int64(&value, integer) == 1 && value <= MaxIterations;
    return isSmall ? qMax<qint64>(value, 0) : Endless;
}

qint64 product(std::initializer_list<qint64> factors)
{
    qint64 result = 1;
    for (const qint64 factor : factors)
        result = qMin(result * factor, Endless); // neither is larger than that
    return result;
}

// Unreadable parameters cost nothing: libcrypto does not read them either.
qint64 workOfFunction(const X509_ALGOR *function)
{
    switch (kindOf(function)) {
    case NID_id_pbkdf2: {
        const auto parameters = parametersOf<Pbkdf2>(function, ASN1_ITEM_rptr(PBKDF2PARAM));
        return parameters ? numberOf(parameters->iter) : 0;
    }
    case NID_id_scrypt: {
        const auto parameters = parametersOf<Scrypt>(function, ASN1_ITEM_rptr(SCRYPT_PARAMS));
        return parameters
            ? product({numberOf(parameters->costParameter), numberOf(parameters->blockSize),
                       numberOf(parameters->parallelizationParameter)})
            : 0;
    }
    default:
        return 0;
    }
}

qint64 workOf(const X509_ALGOR *algorithm)
{
    qint64 work = 0;
    if (!algorithm)
        return work;
    const int kind = kindOf(algorithm);
    // Both describe a function that derives a key, and the use of that key.
    if (kind == NID_pbes2 || kind == NID_pbmac1) {
        const auto parameters = parametersOf<Pbes2>(algorithm, ASN1_ITEM_rptr(PBE2PARAM));
        work = parameters ? workOfFunction(parameters->keyfunc) : 0;
    } else if (const auto parameters = parametersOf<Pbe>(algorithm, ASN1_ITEM_rptr(PBEPARAM))) {
        work = numberOf(parameters->iter);
    }
    ERR_clear_error();
    return work;
}

} // namespace

bool DerivationBudget::spend(const X509_ALGOR *algorithm)
{
    return spend(workOf(algorithm));
}

bool DerivationBudget::spend(const ASN1_INTEGER *iterations)
{
    return spend(numberOf(iterations));
}

bool DerivationBudget::allows(const X509_ALGOR *algorithm)
{
    return workOf(algorithm) <= MaxIterations;
}

bool DerivationBudget::spend(qint64 work)
{
    m_taken = qMin(m_taken + work, Endless);
    return work <= MaxIterations && m_taken <= MaxBundleIterations;
}

} // namespace Trivex
