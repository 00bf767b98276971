#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <QListView>
#include <functional>
#include <utility>

#include "platform/forms/ListBox.h"

namespace quillbox {

// The rows of a ListBox as Qt's views and screen readers see them: each in one line, line breaks as a quiet
// sign.
class ListRows : public QAbstractListModel {
 public:
  ListRows(QWidget* view, const ListBox& list) : QAbstractListModel(view), view_(*view), list_(list) {}
  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // The rows have changed; tells the views if so.
  void Follow();
  // What stands beside the text of a row; may be none.
  std::function<QIcon(int row)> IconOf;

 private:
  const QWidget& view_;
  const ListBox& list_;
  unsigned long revision_ = 0;
};

// Draws a ListBox and hands the person's clicks, keys and drags to it. Selection and current row are the
// ListBox's; the view's own selection only mirrors them.
class ListView : public QListView {
 public:
  ListView(QWidget* parent, ListBox& list, const QString& whenEmpty);
  void Draw();
  void ShowIcons(std::function<QIcon(int row)> of) { rows_.IconOf = std::move(of); }
  // Whether the control is told how many rows are shown.
  void TellRows(bool tells) { tellsRows_ = tells; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;

 private:
  bool OnCheckBox(const QModelIndex& index, const QPoint& place) const;
  void StartDrag();
  void ScrollToTop();
  void TellShownRows();

  ListBox& list_;
  ListRows rows_;
  QString whenEmpty_;
  bool drawing_ = false;
  bool pressedHere_ = false;  // the last press was on this list: a double click may follow
  int drawnIndex_ = -1;
  bool tellsRows_ = false;
  // A press on a selected row, which may begin a drag: it selects when it is released.
  int pressed_ = -1;
  QPoint pressedAt_;
};

}  // namespace quillbox
