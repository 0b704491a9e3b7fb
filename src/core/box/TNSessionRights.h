#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>

// The user rights mask: per area a none, a local and a remote bit.
enum TNSessionRight : std::uint32_t {
    TNSessionRightBase = 0x00000001,
    TNSessionRightPhoneNone = 0x00000002,
    TNSessionRightPhoneLocal = 0x00000010,
    TNSessionRightPhoneRemote = 0x00000020,
    TNSessionRightDialNone = 0x00000040,
    TNSessionRightDialLocal = 0x00000200,
    TNSessionRightDialRemote = 0x00000400,
    RightBoxAdminNone = 0x00010000,
    RightBoxAdminLocal = 0x00080000,
    RightBoxAdminRemote = 0x00100000,
    RightNASNone = 0x00200000,
    RightNASLocal = 0x01000000,
    RightNASRemote = 0x02000000,
    RightTR064 = 0x08000000,
};

enum TNSessionResult : int {
    TNSessionResultUnknown = 0,
    TNSessionResultRejected = 1,
    TNSessionResultUnreachable = 2,
    TNSessionResultBlocked = 3,
    TNSessionResultNoSession = 4,
    TNSessionResultLoggedIn = 5,
};

namespace TNSessionRights {

// Names of the set bits, each followed by a blank, in the order used for logging.
QString debugUserRight(std::uint32_t mask);

// Adds the bits for one user-list value ("0", "3", "5") of the area named by its key
// ("box_admin_rights", "dial_rights", "phone_rights", "nas_rights").
std::uint32_t bitsForUserListValue(const QString& key, const QString& value);

// The mask from the login answer's <Name>/<Access> pairs; 0 when the answer lists none.
std::uint32_t maskFromLoginRights(const QString& answer, bool remoteAccess);

QString sessionResultName(int result);

} // namespace TNSessionRights
