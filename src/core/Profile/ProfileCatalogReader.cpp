#include "ProfileCatalogReader.h"

#include <QDomDocument>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace {

// Reads one profile element, or names what is wrong with it.
class ProfileElementReader {
 public:
  ProfileElementReader(const QDomElement& element, const QString& group) : element_(element) { profile_.group = group; }

  std::optional<KMVProfileDataInfo> read(QString& error) {
    profile_.identifier = number("id");
    profile_.DisplayName = text("DisplayName");
    profile_.Format = text("Format");
    profile_.ExtName = text("ExtName");
    profile_.type = number("type");
    profile_.Device = number("Device", 0);
    profile_.minWidth = number("minWidth", 0);
    profile_.minHeight = number("minHeight", 0);
    profile_.maxWidth = number("maxWidth", 0);
    profile_.maxHeight = number("maxHeight", 0);
    profile_.imageName = element_.attribute(QStringLiteral("image"));
    readOptions();
    if (!problem_.isEmpty()) {
      error = QStringLiteral("profile at line %1 (%2): %3")
                  .arg(element_.lineNumber())
                  .arg(profile_.DisplayName.isEmpty() ? QStringLiteral("no name") : profile_.DisplayName, problem_);
      return std::nullopt;
    }
    return profile_;
  }

 private:
  void fail(const QString& problem) {
    if (problem_.isEmpty()) problem_ = problem;
  }

  QString text(const char* name) {
    const QString value = element_.attribute(QLatin1String(name)).trimmed();
    if (value.isEmpty()) fail(QStringLiteral("attribute %1 is missing").arg(QLatin1String(name)));
    return value;
  }

  int32_t number(const char* name, std::optional<int32_t> fallback = std::nullopt) {
    if (fallback && !element_.hasAttribute(QLatin1String(name))) return *fallback;
    bool ok = false;
    const int32_t value = element_.attribute(QLatin1String(name)).trimmed().toInt(&ok);
    if (!ok) fail(QStringLiteral("attribute %1 is not a whole number").arg(QLatin1String(name)));
    return value;
  }

  void readOptions() {
    for (QDomElement sub = element_.firstChildElement(QStringLiteral("sub")); !sub.isNull();
         sub = sub.nextSiblingElement(QStringLiteral("sub"))) {
      const QString key = sub.attribute(QStringLiteral("key")).trimmed();
      if (key.isEmpty()) {
        fail(QStringLiteral("a sub at line %1 has no key").arg(sub.lineNumber()));
        continue;
      }
      if (profile_.subs.contains(key)) fail(QStringLiteral("option %1 is given twice").arg(key));
      profile_.subs.insert(key, KMVProfileOption{sub.attribute(QStringLiteral("ListValue")),
                                                 sub.attribute(QStringLiteral("DefaultValue"))});
    }
  }

  const QDomElement element_;
  KMVProfileDataInfo profile_;
  QString problem_;
};

}  // namespace

ProfileCatalogFile ProfileCatalogReader::readFile(const QString& path) {
  ProfileCatalogFile result;
  const QString name = QFileInfo(path).fileName();
  auto report = [&result, &name](const QString& problem) {
    result.errors.append(name + QStringLiteral(": ") + problem);
  };

  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    report(QStringLiteral("cannot be read (%1)").arg(file.errorString()));
    return result;
  }
  QDomDocument document;
  QString message;
  int line = 0;
  int column = 0;
  if (!document.setContent(&file, &message, &line, &column)) {
    report(QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(message));
    return result;
  }
  const QDomElement root = document.documentElement();
  if (root.tagName() != QLatin1String("profiles")) {
    report(QStringLiteral("the document element is <%1>, not <profiles>").arg(root.tagName()));
    return result;
  }
  const QString group = root.attribute(QStringLiteral("group")).trimmed();
  if (group.isEmpty()) report(QStringLiteral("<profiles> has no group; its profiles are listed without one"));

  for (QDomElement element = root.firstChildElement(QStringLiteral("profile")); !element.isNull();
       element = element.nextSiblingElement(QStringLiteral("profile"))) {
    QString error;
    if (auto profile = ProfileElementReader(element, group).read(error)) {
      result.profiles.append(std::move(*profile));
    } else {
      report(error);
    }
  }
  return result;
}
