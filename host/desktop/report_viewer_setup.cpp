#include "host/desktop/report_viewer_setup.h"

#include <QButtonGroup>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

constexpr double kWidestMm = 80;  // so that room for the report is left on any paper

QLabel* caption(const QString& words, QWidget* parent) {
  auto* label = new QLabel(words, parent);
  label->setProperty("role", QStringLiteral("caption"));
  return label;
}

}  // namespace

PageDialog::PageDialog(const PageSetup& page, QWidget* parent) : QDialog(parent), before_(page) {
  setWindowTitle(QStringLiteral("Puslapio nustatymai"));
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(20, 18, 20, 16);
  all->setSpacing(14);

  auto* paper = new QHBoxLayout;
  paper->setSpacing(0);
  auto* group = new QButtonGroup(this);
  const auto way = [&](const char* name, const char* words, bool checked) {
    auto* button = new QPushButton(QString::fromUtf8(words), this);
    button->setObjectName(QString::fromUtf8(name));
    button->setProperty("role", QStringLiteral("segment"));
    button->setCheckable(true);
    button->setChecked(checked);
    group->addButton(button);
    paper->addWidget(button);
    return button;
  };
  way("optPortrait", "&Stačias", !page.landscape);
  landscape_ = way("optLandscape", "&Gulsčias", page.landscape);
  paper->addStretch(1);
  all->addWidget(caption(QStringLiteral("A4 lapas"), this));
  all->addLayout(paper);

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(12);
  const auto margin = [&](const char* name, const char* words, float mm, int row, int column) {
    auto* label = caption(QString::fromUtf8(words), this);
    auto* box = new QDoubleSpinBox(this);
    box->setObjectName(QString::fromUtf8(name));
    box->setLocale(QLocale(QLocale::Lithuanian));
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setRange(0, kWidestMm);
    box->setDecimals(1);
    box->setSuffix(QStringLiteral(" mm"));
    box->setValue(double(mm));
    box->setMinimumWidth(110);
    label->setBuddy(box);
    grid->addWidget(label, row, 2 * column);
    grid->addWidget(box, row, 2 * column + 1);
    return box;
  };
  left_ = margin("numLeft", "&Kairėje", page.leftMm, 0, 0);
  right_ = margin("numRight", "&Dešinėje", page.rightMm, 0, 1);
  top_ = margin("numTop", "&Viršuje", page.topMm, 1, 0);
  bottom_ = margin("numBottom", "&Apačioje", page.bottomMm, 1, 1);
  all->addWidget(caption(QStringLiteral("Paraštės"), this));
  all->addLayout(grid);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  auto* cancel = new QPushButton(QStringLiteral("Atšaukti"), this);
  cancel->setObjectName(QStringLiteral("cmdCancel"));
  cancel->setAutoDefault(false);
  auto* agree = new QPushButton(QStringLiteral("Gerai"), this);
  agree->setObjectName(QStringLiteral("cmdOK"));
  agree->setProperty("role", QStringLiteral("primary"));
  agree->setDefault(true);
  buttons->addWidget(cancel);
  buttons->addWidget(agree);
  all->addLayout(buttons);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(agree, &QPushButton::clicked, this, &QDialog::accept);
}

PageSetup PageDialog::page() const {
  PageSetup page = before_;
  page.landscape = landscape_->isChecked();
  page.leftMm = static_cast<float>(left_->value());
  page.topMm = static_cast<float>(top_->value());
  page.rightMm = static_cast<float>(right_->value());
  page.bottomMm = static_cast<float>(bottom_->value());
  return page;
}

}  // namespace tolvex::desktop
