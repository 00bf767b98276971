#include "platform/qt/widgets/ListView.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <utility>

#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/Bindings.h"
#include "platform/qt/widgets/FieldKeys.h"

namespace quillbox {

namespace {

// More of a row than fits into any window; a long text isn't measured whole.
constexpr std::size_t kMostShown = 400;
constexpr QChar kLineBreakSign(u'\u21B5');

QString InOneLine(const SharedText& text) {
  // One more decides whether the last one is half of a character.
  QString line = ToQt(CutTo(text.Get(kMostShown + 1), kMostShown));
  line.replace(QStringLiteral("\r\n"), QString(kLineBreakSign));
  for (QChar& unit : line) {
    if (unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator) {
      unit = kLineBreakSign;
    } else if (unit.category() == QChar::Other_Control) {
      unit = u' ';
    }
  }
  if (text.Length() > kMostShown) line += QChar(u'\u2026');
  return line;
}

// With room above and below the text, as in the lists of other programs.
int RowHeight(const QWidget& list) { return list.fontMetrics().height() * 11 / 8; }

}  // namespace

int ListRows::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : list_.ShownCount(); }

QVariant ListRows::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= list_.ShownCount()) return {};
  const int row = list_.RowAt(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return InOneLine(list_.GetList(row));
    case Qt::SizeHintRole:
      return QSize(0, RowHeight(view_));
    case Qt::DecorationRole:
      if (IconOf) return IconOf(row);
      return {};
    case Qt::CheckStateRole:
      if (list_.HasCheckBoxes()) return list_.GetSelected(row) ? Qt::Checked : Qt::Unchecked;
      return {};
    default:
      return {};
  }
}

Qt::ItemFlags ListRows::flags(const QModelIndex&) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (list_.HasCheckBoxes()) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

void ListRows::Follow() {
  if (revision_ == list_.RowsRevision()) return;
  revision_ = list_.RowsRevision();
  beginResetModel();
  endResetModel();
}

ListView::ListView(QWidget* parent, ListBox& list, const QString& whenEmpty)
    : QListView(parent), list_(list), rows_(this, list), whenEmpty_(whenEmpty) {
  // Plasma 6 draws none where it takes a list for a part of the window: our margin would show half a frame.
  setProperty("_breeze_force_frame", true);
  setModel(&rows_);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setUniformItemSizes(true);
  setTextElideMode(Qt::ElideRight);
  setIconSize(QSize(fontMetrics().height(), fontMetrics().height()));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  setSelectionMode(list.HasCheckBoxes() ? QAbstractItemView::SingleSelection
                                        : QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setAcceptDrops(true);
  viewport()->setAcceptDrops(true);
  setFocusPolicy(Qt::StrongFocus);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int top) {
    if (!drawing_ && top < list_.ShownCount()) list_.SetTopIndex(list_.RowAt(top));
  });
  // Drawn on a page behind, a list has no room to scroll in yet.
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
    const bool drawing = std::exchange(drawing_, true);
    ScrollToTop();
    drawing_ = drawing;
  });
}

void ListView::Draw() {
  drawing_ = true;
  rows_.Follow();
  // The room to scroll in is that of these rows.
  executeDelayedItemsLayout();
  const int current = list_.GetListIndex();
  const QModelIndex index = current < 0 ? QModelIndex() : rows_.index(list_.PositionOf(current));
  QItemSelection selection;
  for (int at = 0; at < rows_.rowCount({}); ++at) {
    const int row = list_.RowAt(at);
    const bool selected = list_.HasCheckBoxes() ? row == current : list_.GetSelected(row);
    if (selected) selection.select(rows_.index(at), rows_.index(at));
  }
  if (selectionModel()->currentIndex() != index) {
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  }
  if (selectionModel()->selection() != selection) {
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  }
  ScrollToTop();
  // A row that becomes the current one is seen; what the person scrolls to afterwards stays.
  if (index.isValid() && std::exchange(drawnIndex_, current) != current) scrollTo(index);
  drawnIndex_ = current;
  drawing_ = false;
  TellShownRows();
  viewport()->update();
}

void ListView::ScrollToTop() {
  const int top = list_.PositionOf(list_.GetTopIndex());
  if (verticalScrollBar()->value() != top) verticalScrollBar()->setValue(top);
}

void ListView::TellShownRows() {
  const int height = sizeHintForRow(0);
  if (tellsRows_ && height > 0) list_.SetShownRows(viewport()->height() / height);
}

void ListView::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  // Whole rows only: what is left over stays empty.
  const int rest = (viewport()->height() + viewportMargins().bottom()) % RowHeight(*this);
  if (viewportMargins().bottom() != rest) setViewportMargins(0, 0, 0, rest);
  TellShownRows();
}

QSize ListView::sizeHint() const {
  const int row = RowHeight(*this);
  return {fontMetrics().height() * 20, row * list_.GetVisibleRows() + 2 * frameWidth()};
}

void ListView::initViewItemOption(QStyleOptionViewItem* option) const {
  QListView::initViewItemOption(option);
  // Behind the text: all texts begin at one line.
  option->decorationPosition = QStyleOptionViewItem::Right;
}

bool ListView::OnCheckBox(const QModelIndex& index, const QPoint& place) const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(place);
}

void ListView::mousePressEvent(QMouseEvent* event) {
  pressed_ = -1;
  pressedHere_ = event->button() == Qt::LeftButton;
  if (!pressedHere_) return;
  const QModelIndex index = indexAt(event->position().toPoint());
  if (!index.isValid()) {
    list_.PersonSelectNone();
    return;
  }
  const int row = list_.RowAt(index.row());
  const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  pressedAt_ = event->position().toPoint();
  if (list_.HasCheckBoxes() && OnCheckBox(index, pressedAt_)) {
    list_.PersonCheck(row, !list_.GetSelected(row));
    return;
  }
  const bool chosen = list_.HasCheckBoxes() ? row == list_.GetListIndex() : list_.GetSelected(row);
  pressed_ = row;
  if (ctrl || shift || !chosen) list_.PersonSelect(row, ctrl, shift);
}

void ListView::mouseMoveEvent(QMouseEvent* event) {
  if (pressed_ < 0 || !(event->buttons() & Qt::LeftButton)) return;
  if ((event->position().toPoint() - pressedAt_).manhattanLength() < QApplication::startDragDistance())
    return;
  pressed_ = -1;
  StartDrag();
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
  const int row = std::exchange(pressed_, -1);
  if (row < 0 || row >= list_.GetListCount() || event->button() != Qt::LeftButton) return;
  if (!(event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier))) list_.PersonSelect(row);
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
  pressed_ = -1;
  // The first of the two presses may have brought this list up: the second one wasn't meant for it.
  if (!std::exchange(pressedHere_, false)) return;
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !index.isValid()) return;
  const int row = list_.RowAt(index.row());
  if (list_.HasCheckBoxes() && OnCheckBox(index, event->position().toPoint())) {
    list_.PersonCheck(row, !list_.GetSelected(row));
  } else {
    list_.PersonDoubleClick(row);
  }
}

void ListView::keyPressEvent(QKeyEvent* event) {
  const KeyEvent key = KeyOf(*event);
  const QString text = event->text();
  const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (key.code == 0 && list_.KeyPress && !command && !text.isEmpty() && text.front().unicode() > u' ') {
    list_.PersonType(FromQt(text));
    return;
  }
  // Escape and what the form's buttons take go on to the form.
  if (key.code == 0 || key.code == keys::kEscape || key.code == keys::kBackspace || key.alt) {
    event->ignore();
    return;
  }
  list_.PersonKey(key);
}

void ListView::inputMethodEvent(QInputMethodEvent* event) {
  if (!list_.KeyPress || event->commitString().isEmpty()) return QListView::inputMethodEvent(event);
  list_.PersonType(FromQt(event->commitString()));
}

void ListView::focusInEvent(QFocusEvent* event) {
  // Not QListView's own: it would make a row current.
  QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
  viewport()->update();
}

void ListView::StartDrag() {
  const Text text = list_.PersonStartDrag();
  if (text.empty()) return;
  auto* const drag = new QDrag(this);
  auto* const mime = new QMimeData;
  mime->setText(ToQt(text));
  drag->setMimeData(mime);
  drag->exec(Qt::CopyAction);
}

void ListView::dragEnterEvent(QDragEnterEvent* event) {
  if (event->source() == this || !OffersText(*event->mimeData())) {
    event->ignore();
  } else {
    event->setDropAction(Qt::CopyAction);
    event->accept();
  }
}

void ListView::dragMoveEvent(QDragMoveEvent* event) {
  if (event->source() == this) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void ListView::dropEvent(QDropEvent* event) {
  if (event->source() == this) return event->ignore();
  list_.PersonDrop(DroppedText(*event));
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void ListView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  const bool nothingFound = list_.IsFiltered() && list_.GetListCount() > 0;
  const QString word = nothingFound ? QStringLiteral("Nothing found") : whenEmpty_;
  if (list_.ShownCount() > 0 || word.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap, word);
}

QWidget* MakeList(FormView& view, ListBox& list, const QString& name, const QString& whenEmpty,
                  std::function<QIcon(int row)> iconOf) {
  auto* const widget = new ListView(&view, list, whenEmpty);
  widget->ShowIcons(std::move(iconOf));
  widget->TellRows(view.Tools().tellSizes);
  widget->setAccessibleName(name);
  view.Join(list, *widget, [widget] { widget->Draw(); });
  return widget;
}

}  // namespace quillbox
