// MainWindow: the tree of objects at the left, the list and the open screens in tabs, the status
// line below.
#pragma once

#include <QMainWindow>

#include "host/desktop/form_widget.h"
#include "host/objects/workspace.h"

class QLabel;
class QPainter;
class QScrollArea;
class QSplitter;
class QTabWidget;

namespace tolvex::desktop {

class MainWindow final : public QMainWindow {
 public:
  MainWindow(Workspace& workspace, ActGuard& guard);
  ~MainWindow() override;

  bool fitsItsScreen() const;  // with room for the frame that a desktop puts around it

  FormWidget& tree() { return *tree_; }
  FormWidget& list() { return *list_; }
  FormWidget& add(ui::Form& form);  // a tab, brought to front
  void bringToFront(ui::Form& form);
  void remove(ui::Form& form);
  void rename(ui::Form& form);
  void showStatus(const Workspace::Status& status);

 private:
  QScrollArea* page(FormWidget& widget);
  int tabOf(const ui::Form& form) const;
  FormWidget* widgetAt(int tab) const;
  void makeMenu();
  void showHelp();
  void closeTab(int tab);
  void setTab(int tab, const ui::Form& form);
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

  Workspace& workspace_;
  ActGuard& guard_;
  QSplitter* splitter_;  // tree | tabs
  QTabWidget* tabs_;
  FormWidget* tree_;
  FormWidget* list_;
  QLabel* firm_;
  QLabel* place_;
};

// Draws a dialog as a window with a title and a shadow in the middle of a picture of that size,
// for pictures of a desktop without a window manager.
void paintWindow(QPainter& painter, QWidget& dialog, QSize within);

}  // namespace tolvex::desktop
