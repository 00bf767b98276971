#include "find/ListFind.h"

#include <utility>

#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"

namespace quillbox {

namespace {

constexpr char16_t kRubout = 0x7F;

}  // namespace

ListFind::ListFind(const Place& place, std::string_view name, std::string_view labelName, ListBox& list,
                   FoldTable& folds, Search search)
    : field(place, name, TextBox::Lines::One, u"", false),
      shown(place, labelName),
      list_(list),
      search_(std::move(search)),
      words_(folds) {
  field.SetToolTipText(u"Shows only the entries that have all of these words");
  field.SetMaxLength(kMostWords);
  shown.SetToolTipText(u"Entries that are shown");
  shown.SetVisible(false);
  field.Change = [this] { Field_Change(); };
  field.KeyDown = [this](KeyEvent& key) { Field_KeyDown(key); };
  list_.KeyPress = [this](char16_t& character) { List_KeyPress(character); };
  list_.RowsChange = [this] { FollowRows(); };
}

void ListFind::Open() {
  field.SetVisible(true);
  shown.SetVisible(true);
  field.SetText(u"");
  ShowCount();
  field.SetFocus();
}

void ListFind::Close() {
  if (!field.GetVisible()) return;
  if (field.HasFocus()) list_.SetFocus();
  field.SetText(u"");
  field.SetVisible(false);
  shown.SetVisible(false);
}

void ListFind::PersonClose() {
  field.Owner().GetDispatcher().Dispatch([this] { Close(); });
}

void ListFind::Field_Change() {
  // A longer text of the same beginning leaves nothing that the shorter one has left out.
  const bool narrower =
      list_.IsFiltered() && field.GetText().starts_with(before_) && !IsHighSurrogate(before_.back());
  const bool wasFiltered = list_.IsFiltered();
  before_ = field.GetText();
  words_.SetWords(before_);
  if (words_.IsEmpty()) {
    list_.ShowAll();
  } else {
    list_.ShowOnly([this](int row) { return search_(words_, row); }, narrower);
    bool may = true;
    Raise(MayTake, may);
    if (may) list_.TakeFirstShown();
  }
  ShowCount();
  if (list_.IsFiltered() != wasFiltered) Raise(FilteredChanged);
}

bool ListFind::IsListKey(int code) {
  switch (code) {
    case keys::kUp:
    case keys::kDown:
    case keys::kHome:
    case keys::kEnd:
    case keys::kPageUp:
    case keys::kPageDown:
    case keys::kEnter:
    case keys::kEscape:
      return true;
    default:
      return false;
  }
}

void ListFind::Field_KeyDown(KeyEvent& key) {
  if (key.ctrl || key.shift || key.alt || !IsListKey(key.code)) return;
  if (key.code == keys::kEscape) {
    Close();
  } else if (key.code != keys::kEnter) {
    list_.TakeKey(key);
  } else if (list_.GetListIndex() >= 0) {
    list_.PersonDoubleClick(list_.GetListIndex());
  }
  // The field itself has nothing to do with it.
  key.code = 0;
}

void ListFind::List_KeyPress(char16_t& character) {
  if (character == keys::kEscape && field.GetVisible()) {
    Close();
    character = 0;
  } else if (character > keys::kSpace && character != kRubout) {
    Type(character);
  }
}

void ListFind::Type(char16_t character) {
  if (!field.GetVisible()) Open();
  field.SetSelStart(field.GetText().size());
  field.PutIn(TextView(&character, 1));
  field.SetFocus();
}

void ListFind::FollowRows() {
  // Later, when an entry that comes in stands whole, its text in the slot of its row.
  if (!field.GetVisible() || std::exchange(follows_, true)) return;
  field.Owner().GetDispatcher().Post([this] {
    follows_ = false;
    ShowCount();
  });
}

void ListFind::ShowCount() {
  Text count = Decimal(list_.ShownCount());
  shown.SetCaption(count.append(u" of ").append(Decimal(list_.GetListCount())));
}

}  // namespace quillbox
