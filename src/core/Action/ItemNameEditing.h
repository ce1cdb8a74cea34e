// Editing an item's output name in the media list: the text typed is
// trimmed, an empty name brings the previous one back, and a name that the
// rules refuse is reported and replaced by the previous one.
#pragma once

#include <QString>

#include "ValueObject/NodeTree.h"

class ItemNameEditing {
 public:
  static constexpr const char* kInvalidCharacter = "Contains invalid character.";
  // Text colour of an edited name, as RGB hexadecimal.
  static constexpr const char* kEditedNameColour = "5a576f";

  // At most 255 characters; the first character (and, for names of three
  // characters or more, the last) is not ".", " ", "," or "/"; no later
  // character is one of ~`!@#$%^&|<>?;:',.
  static bool checkString(const QString& name);

  enum class Outcome { kRestored, kAccepted, kRefused };
  // Ends an edit of `node`'s output name with `typed`. An accepted name
  // becomes the node's output name (announced through `list`); a refused one
  // is reported with the alert "Contains invalid character.".
  static Outcome endEditing(NodeTree& list, const NodeInfo::Ptr& node, const QString& typed);
};
