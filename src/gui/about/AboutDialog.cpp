#include "AboutDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "CommonClass/PlatformServices.h"

AboutDialog::AboutDialog(const AboutBox& box, QWidget* parent) : QDialog(parent) {
  setWindowTitle(box.title);
  auto* icon = new QLabel(this);
  icon->setPixmap(windowIcon().pixmap(96, 96));
  icon->setAlignment(Qt::AlignHCenter);

  auto* name = new QLabel(box.productName, this);
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  name->setFont(large);
  name->setAlignment(Qt::AlignHCenter);

  const QString version = box.buildDate.isEmpty() ? tr("Version %1").arg(box.version)
                                                  : tr("Version %1, built %2").arg(box.version, box.buildDate);
  auto* details = new QLabel(version, this);
  details->setAlignment(Qt::AlignHCenter);
  details->setTextInteractionFlags(Qt::TextSelectableByMouse);

  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(10);
  layout->addWidget(icon);
  layout->addWidget(name);
  layout->addWidget(details);
  if (!box.copyright.isEmpty()) {
    auto* copyright = new QLabel(box.copyright, this);
    copyright->setAlignment(Qt::AlignHCenter);
    copyright->setWordWrap(true);
    layout->addWidget(copyright);
  }
  if (!box.homeAddress.isEmpty()) {
    auto* home = new QLabel(QStringLiteral("<a href=\"%1\">%1</a>").arg(box.homeAddress.toHtmlEscaped()), this);
    home->setAlignment(Qt::AlignHCenter);
    home->setAccessibleName(tr("Home page"));
    connect(home, &QLabel::linkActivated, this, [](const QString& address) {
      if (Workspace* workspace = PlatformServices::workspace()) workspace->openAddress(address);
    });
    layout->addWidget(home);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  setMinimumWidth(380);
}
