// Trees of keyed nodes with icons.
#include <QApplication>
#include <QContextMenuEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <map>

#include "host/desktop/carry.h"
#include "host/desktop/control_view.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/glyphs.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

class Tree final : public QTreeWidget {
 public:
  using QTreeWidget::QTreeWidget;
  std::function<void(const QPoint& viewport, const QPoint& global)> onMenu;
  std::function<bool(const QPoint& viewport)> onDrag;  // true: taken

 private:
  void mousePressEvent(QMouseEvent* event) override {
    pressed_ = event->pos();
    QTreeWidget::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    const bool far =
        (event->pos() - pressed_).manhattanLength() >= QApplication::startDragDistance();
    if (event->buttons() == Qt::LeftButton && far && onDrag(pressed_)) return;
    QTreeWidget::mouseMoveEvent(event);
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (event->reason() == QContextMenuEvent::Mouse) onMenu(event->pos(), event->globalPos());
  }
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override {
    if (selectionModel()->isSelected(index)) painter->fillRect(rect, QColor(colour::kSelected));
    if (!model()->hasChildren(index)) return;
    const QRectF box(rect.right() - indentation() + 1, rect.top(), indentation(), rect.height());
    paintChevron(*painter, box, colour::kMuted, isExpanded(index) ? 0 : -90);
  }
  QPoint pressed_;
};

// The selected row is plain enough; no dotted frame around its text.
class NodeDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem plain(option);
    plain.state &= ~QStyle::State_HasFocus;
    QStyledItemDelegate::paint(painter, plain, index);
  }
};

class TreeViewView final : public ControlView {
 public:
  TreeViewView(FormWidget& form, ui::TreeView& tree) : ControlView(form, tree), tree_(tree) {
    widget_ = new Tree(&form);
    widget_->setHeaderHidden(true);
    widget_->setItemDelegate(new NodeDelegate(widget_));
    widget_->setUniformRowHeights(true);
    widget_->setIndentation(18);
    widget_->setIconSize(QSize(16, 16));
    widget_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    widget_->setTextElideMode(Qt::ElideRight);  // long names are read in their tip
    QPalette quiet = widget_->palette();
    quiet.setColor(QPalette::Highlight, QColor(colour::kSelected));
    quiet.setColor(QPalette::HighlightedText, QColor(colour::kText));
    widget_->setPalette(quiet);
    outer = field = widget_;
    connect(form);
  }

  void sync() override {
    const QSignalBlocker quiet(widget_);
    if (shown_ != tree_.nodes()) {
      sameShape() ? update() : rebuild();
      shown_ = tree_.nodes();
    }
    const auto current = items_.find(tree_.current());
    if (current == items_.end()) {
      widget_->setCurrentItem(nullptr);
      widget_->clearSelection();
    } else if (widget_->currentItem() != current->second || !current->second->isSelected()) {
      widget_->setCurrentItem(current->second);
    }
  }

  QPoint menuPlace() const override {
    const QRect row = widget_->visualItemRect(widget_->currentItem());
    return widget_->viewport()->mapToGlobal(row.bottomLeft() + QPoint(24, 0));
  }

 private:
  static std::string key(const QTreeWidgetItem* item) {
    return item ? text(item->data(0, Qt::UserRole).toString()) : std::string();
  }

  void connect(FormWidget& form) {
    QObject::connect(widget_, &QTreeWidget::currentItemChanged, &form,
                     [this](QTreeWidgetItem* now) {
                       const std::string wanted = key(now);
                       if (wanted == tree_.current()) return;
                       owner.act([this, wanted] {
                         owner.input().select(tree_, wanted);
                         tree_.touch();
                       });
                     });
    QObject::connect(
        widget_, &QTreeWidget::itemDoubleClicked, &form, [this](QTreeWidgetItem* item) {
          if (item->childCount() > 0) return;  // opens or closes the branch
          owner.act([this, wanted = key(item)] { owner.input().activate(tree_, wanted); });
        });
    const auto expansion = [this](bool open) {
      return [this, open](QTreeWidgetItem* item) {
        owner.act([this, open, wanted = key(item)] { owner.input().expand(tree_, wanted, open); });
      };
    };
    QObject::connect(widget_, &QTreeWidget::itemExpanded, &form, expansion(true));
    QObject::connect(widget_, &QTreeWidget::itemCollapsed, &form, expansion(false));
    widget_->onDrag = [this](const QPoint& at) {
      const QTreeWidgetItem* item = widget_->itemAt(at);
      if (!tree_.carries || !item || key(item) != tree_.current()) return false;
      const Burden burden = burdenOf(tree_);
      if (!burden.reference.empty()) drag(*widget_, burden);
      return true;
    };
    widget_->onMenu = [this](const QPoint& at, const QPoint& global) {
      if (!tree_.menu && !tree_.onRightClick) return;
      const QTreeWidgetItem* item = widget_->itemAt(at);
      if (!item) return;
      owner.act([this, wanted = key(item), global] {
        if (!owner.input().select(tree_, wanted).empty()) return;
        owner.setMenuPoint(global);
        owner.input().rightClick(tree_);
      });
    };
  }

  bool sameShape() const {
    const auto& nodes = tree_.nodes();
    return std::equal(nodes.begin(), nodes.end(), shown_.begin(), shown_.end(),
                      [](const ui::TreeNode& a, const ui::TreeNode& b) {
                        return a.key == b.key && a.parent == b.parent;
                      });
  }

  static void dress(QTreeWidgetItem& item, const ui::TreeNode& node) {
    item.setText(0, text(node.text));
    item.setData(0, Qt::UserRole, text(node.key));
    if (!node.icon.empty()) item.setIcon(0, glyphIcon(node.icon));
    QFont font = item.font(0);
    font.setBold(node.bold);
    item.setFont(0, font);
    item.setToolTip(0, text(node.text));
  }

  void update() {
    for (const ui::TreeNode& node : tree_.nodes()) {
      QTreeWidgetItem* item = items_.at(node.key);
      dress(*item, node);
      item->setExpanded(node.expanded);
    }
  }

  void rebuild() {
    const int top = widget_->verticalScrollBar()->value();
    widget_->clear();
    items_.clear();
    for (const ui::TreeNode& node : tree_.nodes()) {
      const auto parent = items_.find(node.parent);
      auto* item = new QTreeWidgetItem;
      if (parent == items_.end()) {
        widget_->addTopLevelItem(item);
      } else {
        parent->second->addChild(item);
      }
      dress(*item, node);
      items_[node.key] = item;
    }
    for (const ui::TreeNode& node : tree_.nodes()) items_.at(node.key)->setExpanded(node.expanded);
    widget_->verticalScrollBar()->setValue(top);
  }

  ui::TreeView& tree_;
  Tree* widget_;
  std::map<std::string, QTreeWidgetItem*> items_;
  std::vector<ui::TreeNode> shown_;
};

}  // namespace

ViewPtr makeTreeView(FormWidget& owner, ui::TreeView& tree) {
  return std::make_unique<TreeViewView>(owner, tree);
}

}  // namespace tolvex::desktop
