// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Faulty {

//! A parameter set that the device knows.
struct GostSet {
    std::string oid; //!< DER, as in CKA_GOSTR3410_PARAMS
    const char *name; //!< the engine's name of it
    size_t size; //!< of a number of the key, in bytes
};

//! Null for one that it does not know, or not for keys of \p size bytes.
const GostSet *gostSet(const std::string &oid, size_t size);

//! The kind of a key, as its CKA_GOSTR3411_PARAMS tell it.
struct GostKind {
    std::string digestOid; //!< DER, as in that attribute
    std::string algorithmOid; //!< DER, as in PrivateKeyInfo
    const char *algorithm; //!< the engine's name
    const char *digest; //!< the engine's name
    size_t size; //!< of a number of the key, in bytes
};

//! Null for parameters that are none of the digest's.
const GostKind *gostKind(const std::string &digestOid);

/*! The arithmetic of GOST keys: the openssl program with its engine "gost", in a process of its
 * own. So the process under test has the engine only if it loads it itself. Empty results are
 * failures. Numbers are little-endian, as PKCS#11 has them.
 */
class GostOpenssl {
public:
    //! \p directory takes files for the time of a call.
    explicit GostOpenssl(std::string directory);

    std::string generate(const GostKind &kind, const GostSet &set) const;
    //! X and Y side by side.
    std::string publicPoint(const GostKind &kind, const GostSet &set,
                            const std::string &number) const;
    std::string digest(const char *name, const std::string &message) const;
    std::string sign(const GostKind &kind, const GostSet &set, const std::string &number,
                     const std::string &digest) const;

private:
    std::string run(std::vector<std::string> arguments) const;

    std::string m_directory;
};

} // namespace Faulty
