#include "host/desktop/carry.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>

#include "host/desktop/form_widget.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

const QString kFormat = QStringLiteral("application/x-tolvex-reference");

QMimeData* mimeOf(const Burden& burden) {
  auto* data = new QMimeData;
  data->setText(text(burden.words));
  if (!burden.reference.empty())
    data->setData(kFormat, QByteArray::fromStdString(burden.reference));
  return data;
}

std::string referenceIn(const QMimeData* data) {
  return data && data->hasFormat(kFormat) ? data->data(kFormat).toStdString() : std::string();
}

bool takes(const ui::Control& control, const std::string& reference) {
  return control.usable() && control.canDrop && control.canDrop(reference);
}

bool takesText(const ui::Control& control) {
  switch (control.kind) {
    case ui::Kind::TextBox:
      return !static_cast<const ui::TextBox&>(control).readOnly();
    case ui::Kind::ComboBox:
      return static_cast<const ui::ComboBox&>(control).editable;
    default:
      return control.kind == ui::Kind::DatePicker;
  }
}

class Target final : public QObject {
 public:
  Target(FormWidget& form, QWidget& widget, ControlView* view, ui::Control& control)
      : QObject(&widget), form_(form), view_(view), control_(control) {
    widget.setAcceptDrops(true);
    widget.installEventFilter(this);
  }

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::DragEnter:
      case QEvent::DragMove:
      case QEvent::Drop:
        return over(*static_cast<QDropEvent*>(event));
      default:
        return false;
    }
  }

  // Texts that are dragged go the way of the toolkit.
  bool over(QDropEvent& event) {
    const std::string reference = referenceIn(event.mimeData());
    if (reference.empty()) return false;
    if (!takes(control_, reference)) {
      event.ignore();
      return event.type() != QEvent::DragMove;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() == QEvent::Drop) put(reference, rowAt(event.position().toPoint()));
    return true;
  }

  int rowAt(QPoint at) const {
    const auto* table = view_ ? qobject_cast<QAbstractItemView*>(view_->field) : nullptr;
    return table && control_.kind == ui::Kind::ListView ? table->indexAt(at).row() : -1;
  }

  void put(const std::string& reference, int row) {
    form_.act([this, reference, row] {
      if (row >= 0) {
        const int listed = view_->listRow(row);
        if (!form_.input().select(static_cast<ui::ListView&>(control_), listed).empty()) return;
      }
      form_.input().drop(control_, reference);
    });
  }

  FormWidget& form_;
  ControlView* view_;
  ui::Control& control_;
};

std::string joined(const ui::Row& row) {
  std::string words;
  for (const ui::Cell& cell : row.cells) {
    if (&cell != row.cells.data()) words += "\t";
    words += cell.text;
  }
  return words;
}

}  // namespace

Burden burdenOf(const ui::Control& control) {
  Burden burden;
  std::string key;
  if (control.kind == ui::Kind::ListView) {
    const ui::Row* row = static_cast<const ui::ListView&>(control).currentRow();
    if (!row) return burden;
    burden.words = joined(*row);
    key = row->key;
  } else if (control.kind == ui::Kind::TreeView) {
    const auto& tree = static_cast<const ui::TreeView&>(control);
    const ui::TreeNode* node = tree.find(tree.current());
    if (!node) return burden;
    burden.words = node->text;
    key = node->key;
  }
  if (control.carries) burden.reference = control.carries(key);
  return burden;
}

void copy(const Burden& burden) { QGuiApplication::clipboard()->setMimeData(mimeOf(burden)); }

void drag(QWidget& from, const Burden& burden) {
  auto* drag = new QDrag(&from);  // lives until the drag is over
  drag->setMimeData(mimeOf(burden));
  drag->exec(Qt::CopyAction);
}

std::string copiedReference() { return referenceIn(QGuiApplication::clipboard()->mimeData()); }

ui::Control* targetOf(ui::Control& control, const std::string& reference) {
  if (reference.empty()) return nullptr;
  if (takes(control, reference)) return &control;
  if (takesText(control)) return nullptr;
  for (ui::Control* around = control.parent; around; around = around->parent)
    if (takes(*around, reference)) return around;
  return nullptr;
}

void takeDrops(FormWidget& form, QWidget& widget, ControlView* view, ui::Control& control) {
  if (!control.canDrop) return;
  auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  new Target(form, area ? *area->viewport() : widget, view, control);
}

}  // namespace tolvex::desktop
