#include "ItemNameEditing.h"

#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"

namespace {

constexpr int kLongestName = 255;

bool isForbiddenAtAnEnd(QChar character) {
  return character == QLatin1Char('.') || character == QLatin1Char(' ') || character == QLatin1Char(',') ||
         character == QLatin1Char('/');
}

bool isForbiddenInside(QChar character) {
  static const QString forbidden = QStringLiteral("~`!@#$%^&|<>?;:',");
  return forbidden.contains(character);
}

}  // namespace

bool ItemNameEditing::checkString(const QString& name) {
  if (name.size() > kLongestName) return false;
  if (name.isEmpty()) return true;
  if (isForbiddenAtAnEnd(name.front())) return false;
  if (name.size() > 2 && isForbiddenAtAnEnd(name.back())) return false;
  for (qsizetype index = 1; index < name.size(); ++index) {
    if (isForbiddenInside(name.at(index))) return false;
  }
  return true;
}

ItemNameEditing::Outcome ItemNameEditing::endEditing(NodeTree& list, const NodeInfo::Ptr& node, const QString& typed) {
  const QString name = typed.trimmed();
  if (node == nullptr || name.isEmpty()) return Outcome::kRestored;
  if (!checkString(name)) {
    CommonClass::showMessage(kProductName, QLatin1String(kInvalidCharacter));
    return Outcome::kRefused;
  }
  node->setOutputFilename(name);
  list.noteChanged(node);
  return Outcome::kAccepted;
}
