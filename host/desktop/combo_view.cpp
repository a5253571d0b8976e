// Combos: a choice from a list, or a box that completes what is typed from its items.
#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QSignalBlocker>
#include <utility>

#include "framework/text.h"
#include "host/desktop/control_view.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/suggestions.h"
#include "host/desktop/theme.h"
#include "platform/host.h"

namespace tolvex::desktop {

std::vector<int> suggestions(const std::vector<ui::ComboBox::Item>& items, std::string_view typed,
                             std::size_t most) {
  std::vector<int> begin, inside;
  for (std::size_t i = 0; i < items.size() && begin.size() < most; ++i) {
    if (startsWithNoCase(items[i].text, typed)) {
      begin.push_back(static_cast<int>(i));
    } else if (inside.size() < most && containsNoCase(items[i].text, typed)) {
      inside.push_back(static_cast<int>(i));
    }
  }
  inside.resize(std::min(inside.size(), most - begin.size()));
  begin.insert(begin.end(), inside.begin(), inside.end());
  return begin;
}

namespace {

constexpr std::size_t kMostSuggestions = 200;

// The items of the control, all or some, without a copy of their texts.
class ItemModel final : public QAbstractListModel {
 public:
  ItemModel(const ui::ComboBox& combo, QObject* parent)
      : QAbstractListModel(parent), combo_(combo) {}
  int rowCount(const QModelIndex& parent = {}) const override {
    if (parent.isValid()) return 0;
    return static_cast<int>(some_ ? chosen_.size() : count_);
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    const int at = item(index.row());
    const auto& items = combo_.items();
    if (at < 0 || at >= static_cast<int>(items.size())) return {};
    return text(items[static_cast<std::size_t>(at)].text);
  }
  int item(int row) const {
    if (!some_) return row;
    return row >= 0 && row < static_cast<int>(chosen_.size())
               ? chosen_[static_cast<std::size_t>(row)]
               : -1;
  }
  void showAll() {
    beginResetModel();
    some_ = false;
    count_ = combo_.items().size();
    endResetModel();
  }
  void showSome(std::vector<int> chosen) {
    beginResetModel();
    some_ = true;
    chosen_ = std::move(chosen);
    endResetModel();
  }

 private:
  const ui::ComboBox& combo_;
  bool some_ = false;
  std::size_t count_ = 0;
  std::vector<int> chosen_;
};

class Combo final : public QComboBox {
 public:
  explicit Combo(QWidget* parent) : QComboBox(parent) {
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    list->setProperty("popup", true);
    setView(list);
    setMaxVisibleItems(18);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(1);
  }
  void showPopup() override {
    // Long names are read in the list, even where the box is short.
    const auto* rows = model();
    int widest = width();
    for (int i = 0; i < std::min(rows->rowCount(), 200); ++i) {
      const QString words = rows->index(i, 0).data().toString();
      widest = std::max(widest, fontMetrics().horizontalAdvance(words) + 40);
    }
    view()->setMinimumWidth(std::min(widest, 620));
    QComboBox::showPopup();
  }

 private:
  void paintEvent(QPaintEvent* event) override {
    QComboBox::paintEvent(event);
    QPainter painter(this);
    paintChevron(painter, QRectF(width() - 22, 0, 16, height()),
                 isEnabled() ? colour::kMuted : colour::kFaint);
  }
  void wheelEvent(QWheelEvent* event) override {
    event->ignore();
  }  // scrolling a screen chooses nothing
};

// Whether the suggestion was taken by Enter or by the mouse.
class EnterNotice final : public QObject {
 public:
  explicit EnterNotice(QListView* popup) : QObject(popup) {
    popup->installEventFilter(this);
    popup->viewport()->installEventFilter(this);
  }
  bool pressed = false;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonPress) pressed = false;
    if (event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      pressed = key == Qt::Key_Return || key == Qt::Key_Enter;
    }
    return false;
  }
};

class ComboView final : public ControlView {
 public:
  ComboView(FormWidget& form, ui::ComboBox& combo) : ControlView(form, combo), combo_(combo) {
    box_ = new Combo(&form);
    model_ = new ItemModel(combo, box_);
    box_->setModel(model_);
    outer = field = box_;
    if (combo.editable) makeEditable();
    QObject::connect(box_, &QComboBox::activated, &form, [this](int index) { choose(index); });
  }
  void sync() override {
    const QSignalBlocker quiet(box_);
    if (shown_ != combo_.items()) {
      shown_ = combo_.items();
      model_->showAll();
    }
    if (box_->currentIndex() != combo_.index()) box_->setCurrentIndex(combo_.index());
    if (!combo_.editable) return;
    QLineEdit* edit = box_->lineEdit();
    const QString words = text(combo_.typed());
    const int caret = edit->cursorPosition();
    if (edit->text() != words) {
      edit->setText(words);
      edit->setCursorPosition(std::min(caret, static_cast<int>(words.size())));
    }
    if (!edit->hasFocus()) {
      left();
    } else if (std::exchange(chosen_, false)) {
      // Marked from the end to the beginning, where the caret shows how the text begins.
      edit->setSelection(static_cast<int>(words.size()), -static_cast<int>(words.size()));
    }
  }
  void left() override {
    if (combo_.editable) box_->lineEdit()->setCursorPosition(0);
  }

 private:
  void choose(int index, bool byEnter = false) {
    owner.act([this, index, byEnter] {
      const unsigned before = owner.form().host().interruptions();
      const bool done = owner.input().choose(combo_, index).empty();
      chosen_ = true;
      combo_.touch();
      // Enter takes the suggestion and goes on, unless the choice led elsewhere.
      const bool stayed = owner.form().host().interruptions() == before;
      if (byEnter && done && stayed && owner.form().focus() == &combo_) owner.step(combo_);
    });
  }
  void makeEditable() {
    box_->setEditable(true);
    box_->setInsertPolicy(QComboBox::NoInsert);
    found_ = new ItemModel(combo_, box_);
    found_->showSome({});
    completer_ = new QCompleter(found_, box_);
    completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer_->setMaxVisibleItems(14);
    auto* list = new QListView;
    list->setUniformItemSizes(true);
    list->setProperty("popup", true);
    completer_->setPopup(list);
    enter_ = new EnterNotice(list);
    completer_->setWidget(box_->lineEdit());
    box_->setCompleter(nullptr);
    QLineEdit* edit = box_->lineEdit();
    edit->setObjectName(QString());
    owner.watch(*edit, combo_);
    QObject::connect(edit, &QLineEdit::textEdited, &owner, [this](const QString& typed) {
      owner.actNow([this, typed] { owner.input().typeCombo(combo_, text(typed)); });
      owner.wake();
      suggest(typed);
    });
    QObject::connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), &owner,
                     [this](const QModelIndex& index) {
                       // The completer's rows are the model's: it filters nothing itself.
                       const int item = found_->item(index.row());
                       if (item >= 0) choose(item, enter_->pressed);
                     });
  }
  void suggest(const QString& typed) {
    if (typed.isEmpty() || combo_.text() != text(typed)) {
      completer_->popup()->hide();
      return;
    }
    auto fitting = suggestions(combo_.items(), text(typed), kMostSuggestions);
    const bool whole = fitting.size() == 1 && combo_.index() == fitting.front();
    found_->showSome(std::move(fitting));
    if (found_->rowCount() == 0 || whole) {
      completer_->popup()->hide();
      return;
    }
    QRect place = box_->rect();
    place.setWidth(std::max(place.width(), 320));
    place.translate(box_->lineEdit()->mapFrom(box_, QPoint(0, 0)));
    completer_->complete(place);
    completer_->popup()->setCurrentIndex(completer_->completionModel()->index(0, 0));
  }

  ui::ComboBox& combo_;
  Combo* box_;
  ItemModel* model_;
  ItemModel* found_ = nullptr;
  QCompleter* completer_ = nullptr;
  EnterNotice* enter_ = nullptr;
  bool chosen_ = false;  // from a list, since the box was drawn
  std::vector<ui::ComboBox::Item> shown_;
};

}  // namespace

ViewPtr makeComboView(FormWidget& owner, ui::ComboBox& combo) {
  return std::make_unique<ComboView>(owner, combo);
}

}  // namespace tolvex::desktop
