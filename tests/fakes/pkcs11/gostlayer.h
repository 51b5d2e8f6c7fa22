// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/functions.h"
#include "tests/fakes/pkcs11/gostobjects.h"

#include <mutex>
#include <set>
#include <vector>

namespace Faulty {

struct GostMechanism;
struct GostSession;

/*! GOST R 34.10 keys in front of a real module that has none: it answers for its own objects and
 * mechanisms, and passes everything else on. Login and kind of session are the real module's, asked
 * at each call. Certificates stay there too. All members may be called from any thread.
 */
class GostLayer {
public:
    //! Null unless TRIVEX_FAULTY_GOST names a directory.
    static GostLayer *instance();

    CK_RV mechanismList(CK_SLOT_ID slot, CK_MECHANISM_TYPE *types, CK_ULONG *count);
    CK_RV mechanismInfo(CK_SLOT_ID slot, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO *info);
    CK_RV createObject(CK_SESSION_HANDLE session, CK_ATTRIBUTE *attributes, CK_ULONG count,
                       CK_OBJECT_HANDLE *handle);
    CK_RV destroyObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle);
    CK_RV getAttributes(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle,
                        CK_ATTRIBUTE *attributes, CK_ULONG count);
    CK_RV setAttributes(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle,
                        CK_ATTRIBUTE *attributes, CK_ULONG count);
    CK_RV findInit(CK_SESSION_HANDLE session, CK_ATTRIBUTE *attributes, CK_ULONG count);
    CK_RV find(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE *handles, CK_ULONG room,
               CK_ULONG *count);
    CK_RV findFinal(CK_SESSION_HANDLE session);
    CK_RV generatePair(CK_SESSION_HANDLE session, CK_MECHANISM *mechanism, CK_ATTRIBUTE *publicPart,
                       CK_ULONG publicCount, CK_ATTRIBUTE *privatePart, CK_ULONG privateCount,
                       CK_OBJECT_HANDLE *publicHandle, CK_OBJECT_HANDLE *privateHandle);
    CK_RV digestInit(CK_SESSION_HANDLE session, CK_MECHANISM *mechanism);
    CK_RV digest(CK_SESSION_HANDLE session, CK_BYTE *data, CK_ULONG size, CK_BYTE *result,
                 CK_ULONG *room);
    CK_RV signInit(CK_SESSION_HANDLE session, CK_MECHANISM *mechanism, CK_OBJECT_HANDLE key);
    CK_RV sign(CK_SESSION_HANDLE session, CK_BYTE *data, CK_ULONG size, CK_BYTE *result,
               CK_ULONG *room);

private:
    //! What a session has begun.
    struct Work {
        std::vector<CK_OBJECT_HANDLE> found;
        const GostMechanism *digest = nullptr;
        const GostMechanism *sign = nullptr;
        GostObject key;
    };

    explicit GostLayer(std::string directory);
    const GostMechanism *offered(CK_MECHANISM_TYPE type, CK_FLAGS use) const;
    //! What the token shows of an object, by its habits.
    GostObject shown(GostObject object) const;
    CK_RV look(CK_SESSION_HANDLE session, GostSession *result) const;
    CK_RV lookFor(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE handle, GostSession *result,
                  GostObject *object) const;

    const std::string m_directory;
    std::mutex m_mutex;
    std::map<CK_SESSION_HANDLE, Work> m_works;
};

} // namespace Faulty
