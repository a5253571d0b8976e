// Lists: a table of rows with ticks, bold cells, marks told by colour and sign, and a filter box.
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include "host/desktop/carry.h"
#include "host/desktop/column_memory.h"
#include "host/desktop/control_view.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/glyphs.h"
#include "host/desktop/row_model.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

constexpr int kSignWidth = 20;
constexpr int kCellPadding = 8;
constexpr int kScrollBar = 16;
constexpr int kWidestWish = 1240;    // a dialog is as wide as that where the screen allows
constexpr int kNarrowestChars = 12;  // of a column that grows, before the list scrolls sideways

QColor rowGround(bool selected, int row) {
  return selected ? colour::kSelected : row % 2 != 0 ? colour::kStripe : colour::kCard;
}

class RowDelegate final : public QStyledItemDelegate {
 public:
  RowDelegate(const ui::ListView& list, const RowModel& model, QObject* parent)
      : QStyledItemDelegate(parent), list_(list), model_(model) {}

  // The width of the words is asked for when the user fits a column to what it holds.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const ui::Row* row = model_.row(index.row());
    const auto column = static_cast<std::size_t>(index.column());
    if (!row || column >= row->cells.size()) return {10, kRowHeight};
    QFont font = option.font;
    font.setBold(row->bold || row->cells[column].bold);
    const int words = QFontMetrics(font).horizontalAdvance(text(row->cells[column].text));
    return {words + 2 * kCellPadding + 2 + (column == 0 ? signs() : 0), kRowHeight};
  }

  int signs() const {
    return (list_.checkBoxes ? kSignWidth : 0) + (model_.hasMarks() ? kSignWidth : 0) +
           (model_.hasIcons() ? kSignWidth : 0);
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const ui::Row* row = model_.row(index.row());
    if (!row) return;
    const auto& columns = model_.columns();
    const auto column = static_cast<std::size_t>(index.column());
    const bool enabled = option.state & QStyle::State_Enabled;
    QRect box = option.rect.adjusted(kCellPadding, 0, -kCellPadding, 0);
    if (index.column() == 0) paintSigns(*painter, *row, box, enabled);
    if (column >= row->cells.size() || column >= columns.size()) return;
    const ui::Cell& cell = row->cells[column];
    QFont font = option.font;
    font.setBold(row->bold || cell.bold);
    painter->setFont(font);
    painter->setPen(QColor(ink(*row, enabled)));
    const Qt::Alignment side = columns[column].align == ui::Align::Right    ? Qt::AlignRight
                               : columns[column].align == ui::Align::Center ? Qt::AlignHCenter
                                                                            : Qt::AlignLeft;
    const QString words = text(cell.text);
    const QFontMetrics metrics(font);
    painter->drawText(box, static_cast<int>(side | Qt::AlignVCenter | Qt::TextSingleLine),
                      metrics.horizontalAdvance(words) > box.width()
                          ? metrics.elidedText(words, Qt::ElideRight, box.width())
                          : words);
  }

 private:
  static QRgb ink(const ui::Row& row, bool enabled) {
    if (!enabled || row.mark == ui::Mark::Grey) return colour::kFaint;
    return row.mark == ui::Mark::Bad ? colour::kBad : colour::kText;
  }
  void paintSigns(QPainter& painter, const ui::Row& row, QRect& box, bool enabled) const {
    const auto next = [&box] {
      const QRectF place(box.left() - 1, box.center().y() - 8, 16, 17);
      box.setLeft(box.left() + kSignWidth);
      return place;
    };
    if (list_.checkBoxes) paintCheck(painter, next(), row.checked, enabled);
    if (model_.hasMarks()) paintMark(painter, next(), row.mark);
    if (model_.hasIcons()) {
      const QRectF place = next();
      if (!row.icon.empty())
        paintGlyph(painter, QRectF(place.left(), place.top(), 16, 16), row.icon);
    }
  }

  const ui::ListView& list_;
  const RowModel& model_;
};

class Table final : public QTreeView {
 public:
  using QTreeView::QTreeView;
  std::function<void(const QPoint& viewport, const QPoint& global)> onMenu;
  std::function<bool(const QPoint& viewport)> onPress;  // true: taken
  std::function<bool(const QPoint& viewport)> onDrag;   // true: taken
  std::function<void()> onResize;
  std::function<void()> onHeaderReleased;
  QSize wish{300, 200};  // to show all columns, as far as a dialog may grow
  QSize sizeHint() const override { return wish; }

 private:
  // The viewport of the header tells here when the mouse is let go.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == header()->viewport() && event->type() == QEvent::MouseButtonRelease) {
      QMetaObject::invokeMethod(this, onHeaderReleased, Qt::QueuedConnection);
    }
    return QTreeView::eventFilter(watched, event);
  }
  // A row is striped, or marked, as wide as the list is, also where no column stands.
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
    const bool selected = selectionModel()->isRowSelected(index.row(), index.parent());
    painter->fillRect(QRect(0, option.rect.top(), viewport()->width(), option.rect.height()),
                      rowGround(selected, index.row()));
    QTreeView::drawRow(painter, option, index);
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (event->reason() == QContextMenuEvent::Mouse) onMenu(event->pos(), event->globalPos());
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && onPress(event->pos())) return;
    pressed_ = event->pos();
    QTreeView::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    const bool far =
        (event->pos() - pressed_).manhattanLength() >= QApplication::startDragDistance();
    if (event->buttons() == Qt::LeftButton && far && onDrag(pressed_)) return;
    QTreeView::mouseMoveEvent(event);
  }
  void resizeEvent(QResizeEvent* event) override {
    QTreeView::resizeEvent(event);
    onResize();
  }
  QPoint pressed_;
};

class ListViewView final : public ControlView {
 public:
  ListViewView(FormWidget& form, ui::ListView& list) : ControlView(form, list), list_(list) {
    table_ = new Table(&form);
    model_ = new RowModel(list, table_);
    delegate_ = new RowDelegate(list, *model_, table_);
    prepareTable();
    outer = field = table_;
    if (list.filterBox) addFilter(form);
    connect(form);
  }

  void sync() override {
    syncing_ = true;
    const int top = table_->verticalScrollBar()->value();
    const bool anew = model_->refresh();
    if (anew) table_->verticalScrollBar()->setValue(top);
    if (anew || wished_.empty()) {
      measureColumns();
      if (const std::string name = ColumnMemory(list_, model_->columns()).name();
          name != recalled_) {
        recalled_ = name;
        recallColumns();
      }
      layColumns();
    }
    selectCurrent(anew);
    syncing_ = false;
  }

  int listRow(int shown) const override { return model_->listRow(shown); }

  QPoint menuPlace() const override {
    const QRect row = table_->visualRect(table_->currentIndex());
    if (!row.isValid()) return table_->mapToGlobal(QPoint(20, 30));
    return table_->viewport()->mapToGlobal(row.bottomLeft() + QPoint(24, 0));
  }

 private:
  void prepareTable() {
    table_->setModel(model_);
    table_->setItemDelegate(delegate_);
    table_->setRootIsDecorated(false);
    table_->setUniformRowHeights(true);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->setMinimumHeight(kRowHeight * 4);
    table_->header()->setStretchLastSection(false);
    table_->header()->setSectionsMovable(true);
    table_->header()->setContextMenuPolicy(Qt::CustomContextMenu);
    table_->header()->setMinimumSectionSize(24);
    table_->header()->setHighlightSections(false);
  }

  void addFilter(FormWidget& form) {
    auto* holder = new QWidget(&form);
    auto* layout = new QVBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    filter_ = new QLineEdit(holder);
    filter_->setPlaceholderText(QStringLiteral("Filtruoti sąrašą"));
    filter_->setClearButtonEnabled(true);
    filter_->setObjectName(text(list_.name) + QStringLiteral("_filter"));
    layout->addWidget(filter_);
    layout->addWidget(table_, 1);
    outer = holder;
    // A pause in typing is awaited: a long list is not searched at every key.
    auto* pause = new QTimer(holder);
    pause->setSingleShot(true);
    pause->setInterval(120);
    QObject::connect(filter_, &QLineEdit::textEdited, pause, qOverload<>(&QTimer::start));
    QObject::connect(pause, &QTimer::timeout, holder, [this] {
      syncing_ = true;
      model_->setFilter(text(filter_->text()));
      selectCurrent(true);
      syncing_ = false;
    });
    QObject::connect(filter_, &QLineEdit::returnPressed, holder, [this] {
      table_->setFocus(Qt::TabFocusReason);
      if (!table_->currentIndex().isValid() && model_->rowCount() > 0) {
        table_->setCurrentIndex(model_->index(0, 0));
      }
    });
  }

  void connect(FormWidget& form) {
    QObject::connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, &form,
                     [this](const QModelIndex& now) {
                       const int row = model_->listRow(now.row());
                       if (syncing_ || row < 0 || row == list_.current()) return;
                       owner.act([this, row] {
                         owner.input().select(list_, row);
                         list_.touch();
                       });
                     });
    QObject::connect(table_, &QTreeView::doubleClicked, &form, [this](const QModelIndex& at) {
      const int row = model_->listRow(at.row());
      owner.act([this, row] { owner.input().activate(list_, row); });
    });
    table_->onMenu = [this](const QPoint& at, const QPoint& global) {
      if (!list_.menu && !list_.onRightClick) return;
      const int row = model_->listRow(table_->indexAt(at).row());
      owner.act([this, row, global] {
        if (row >= 0) {
          if (!owner.input().select(list_, row).empty()) return;
        }
        owner.setMenuPoint(global);
        owner.input().rightClick(list_);
      });
    };
    table_->onPress = [this](const QPoint& at) {
      if (!list_.checkBoxes || !table_->isEnabled()) return false;
      const QModelIndex index = table_->indexAt(at);
      const QRect cell = table_->visualRect(index);
      if (!index.isValid() || index.column() != 0 ||
          at.x() > cell.left() + kCellPadding + kSignWidth) {
        return false;
      }
      const int row = model_->listRow(index.row());
      const bool on = !model_->row(index.row())->checked;
      table_->setFocus(Qt::MouseFocusReason);
      owner.act([this, row, on] { owner.input().check(list_, row, on); });
      return true;
    };
    table_->onDrag = [this](const QPoint& at) {
      // The press has made its row the current one.
      const int row = model_->listRow(table_->indexAt(at).row());
      if (!list_.carries || row < 0 || row != list_.current()) return false;
      const Burden burden = burdenOf(list_);
      if (!burden.reference.empty()) drag(*table_, burden);
      return true;
    };
    table_->onResize = [this] { layColumns(); };
    connectHeader(form);
  }

  // What the user does to the columns is his own from then on, also tomorrow.
  void connectHeader(FormWidget& form) {
    QHeaderView* header = table_->header();
    QObject::connect(header, &QHeaderView::sectionResized, &form,
                     [this](int column, int, int width) {
                       const auto at = static_cast<std::size_t>(column);
                       if (laying_ || at >= own_.size()) return;
                       own_[at] = width;
                       movedColumns_ = true;
                     });
    QObject::connect(header, &QHeaderView::sectionMoved, &form, [this] {
      if (!laying_) movedColumns_ = true;
    });
    QObject::connect(header, &QHeaderView::customContextMenuRequested, &form,
                     [this, header](const QPoint& at) {
                       auto* menu = new QMenu(header);
                       menu->setAttribute(Qt::WA_DeleteOnClose);
                       menu->addAction(QStringLiteral("Įprastas stulpelių plotis ir tvarka"),
                                       header, [this] { forgetColumns(); });
                       menu->popup(header->mapToGlobal(at));
                     });
    table_->onHeaderReleased = [this] {
      if (!std::exchange(movedColumns_, false)) return;
      layColumns();
      owner.act([this] { keepColumns(); });
    };
    header->viewport()->installEventFilter(table_);
  }

  void keepColumns() {
    std::vector<ColumnMemory::Place> places;
    for (int i = 0; i < table_->header()->count(); ++i) {
      const int column = table_->header()->logicalIndex(i);
      places.push_back({column, own_[static_cast<std::size_t>(column)]});
    }
    ColumnMemory(list_, model_->columns()).write(places);
  }

  void forgetColumns() {
    owner.act([this] {
      ColumnMemory(list_, model_->columns()).forget();
      recallColumns();
      layColumns();
    });
  }

  void selectCurrent(bool scroll) {
    const int wanted = list_.current() < 0 ? -1 : model_->shownRow(list_.current());
    const QModelIndex now = table_->currentIndex();
    if (wanted < 0) {
      table_->selectionModel()->clear();
      return;
    }
    const bool moved = now.row() != wanted;
    if (!moved && table_->selectionModel()->isRowSelected(wanted) && !scroll) return;
    const QModelIndex target = model_->index(wanted, std::max(now.column(), 0));
    table_->selectionModel()->setCurrentIndex(
        target, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (moved || scroll) table_->scrollTo(target);
  }

  void measureColumns() {
    wished_.clear();
    narrowest_.clear();
    int wide = 0;
    const auto& columns = model_->columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const int caption =
          table_->fontMetrics().horizontalAdvance(text(columns[i].caption)) + 2 * kCellPadding + 6;
      const int signs = i == 0 ? delegate_->signs() : 0;
      const auto width = [&](int chars) {
        return std::max(charsWidth(table_->font(), chars) + 2 * kCellPadding + 4 + signs, caption);
      };
      wished_.push_back(width(columns[i].chars));
      narrowest_.push_back(width(std::min(columns[i].chars, kNarrowestChars)));
      wide += wished_.back();
    }
    table_->wish.setWidth(std::min(wide + kScrollBar, kWidestWish));
    table_->updateGeometry();
  }

  // As the user has laid out these columns before, if he has.
  void recallColumns() {
    const auto& columns = model_->columns();
    const auto places = ColumnMemory(list_, columns).read();
    own_.assign(columns.size(), 0);
    laying_ = true;
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
      const auto at = static_cast<std::size_t>(i);
      const int column = places.empty() ? i : places[at].column;
      if (!places.empty()) own_[static_cast<std::size_t>(column)] = places[at].width;
      table_->header()->moveSection(table_->header()->visualIndex(column), i);
    }
    laying_ = false;
  }

  // A column that the user has sized keeps his width. Growing columns share the room that the
  // others leave: more than they wished for, or less, down to their narrowest.
  void layColumns() {
    const auto& columns = model_->columns();
    if (wished_.size() != columns.size()) return;
    const auto grows = [&](std::size_t i) { return columns[i].grow && own_[i] == 0; };
    int room = table_->viewport()->width();
    int wished = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (grows(i))
        wished += wished_[i];
      else
        room -= own_[i] != 0 ? own_[i] : wished_[i];
    }
    laying_ = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      int width = own_[i] != 0 ? own_[i] : wished_[i];
      if (grows(i)) {
        const int share =
            wished > 0 ? static_cast<int>(std::int64_t{room} * wished_[i] / wished) : 0;
        width = std::max(share, narrowest_[i]);
        wished -= wished_[i];
        room -= width;
      }
      table_->setColumnWidth(static_cast<int>(i), width);
    }
    laying_ = false;
  }

  ui::ListView& list_;
  Table* table_;
  RowModel* model_;
  RowDelegate* delegate_;
  QLineEdit* filter_ = nullptr;
  std::vector<int> wished_, narrowest_;  // of each column, as asked for
  std::vector<int> own_;                 // the user's widths; 0: none
  bool laying_ = false;                  // the program moves the columns, not the user
  bool movedColumns_ = false;            // since the mouse was pressed
  std::string recalled_;                 // whose memory of columns is shown
  bool syncing_ = false;                 // the program moves the selection, not the user
};

}  // namespace

ViewPtr makeListView(FormWidget& owner, ui::ListView& list) {
  return std::make_unique<ListViewView>(owner, list);
}

}  // namespace tolvex::desktop
