// Turning a catalogue entry into a node's output profile.
#pragma once

#include <optional>

#include "Profile/KMVProfileDataInfo.h"
#include "ValueObject/NodeInfo.h"
#include "ValueObject/ProfileSettingInfo.h"

class ProfileAction {
 public:
  static constexpr const char* kCatalogDamagedMessage = "System error, please restart the program.";

  // The profile an entry describes, with the default choice of each option;
  // an option without a default choice leaves its field at the default.
  // None when the entry has no audio bitrates, the sign of a damaged catalogue.
  static std::optional<ProfileSettingInfo> makeProfileSettingInfo(const KMVProfileDataInfo& entry);

  // Gives `node` the profile of `entry`. Nothing changes for a null entry or
  // the profile the node has already. For a damaged catalogue the remembered
  // profile name goes back to the default, the user is told, and false is
  // returned: the caller then closes the main window and terminates.
  static bool initProfileSettingInfo(NodeInfo& node, const KMVProfileDataInfo* entry);
};
