#include "x11/TestOwner.h"

#include <algorithm>

namespace quillbox::test {

Reaction Of(Reaction::Kind kind) {
  Reaction reaction;
  reaction.kind = kind;
  return reaction;
}

Reaction Gives(const std::string& type, const std::string& bytes, int format) {
  Reaction reaction;
  reaction.piece = {type, format, bytes};
  return reaction;
}

Reaction GivesInPieces(const std::string& type, const std::string& bytes, std::size_t pieceBytes) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < bytes.size(); at += pieceBytes)
    pieces.push_back({type, 8, bytes.substr(at, pieceBytes)});
  pieces.push_back({type, 8, ""});
  return GivesPieces(std::move(pieces));
}

Reaction GivesPieces(std::vector<Piece> pieces) {
  Reaction reaction;
  reaction.kind = Reaction::Incremental;
  reaction.piece = {"INCR", 32, std::string(4, '\1')};
  reaction.pieces = [pieces = std::move(pieces)](std::size_t i) {
    return i < pieces.size() ? std::optional(pieces[i]) : std::nullopt;
  };
  return reaction;
}

TestOwner& TestOwner::Offer(const std::string& target, Reaction reaction) {
  if (!reactions_.count(target)) order_.push_back(target);
  reactions_[target] = std::move(reaction);
  return *this;
}

TestOwner& TestOwner::OfferText(const std::string& utf8) {
  return Offer("UTF8_STRING", Gives("UTF8_STRING", utf8));
}

Reaction TestOwner::TargetList(const std::vector<std::string>& names) {
  std::string bytes;
  for (const std::string& name : names) {
    const xcb_atom_t atom = Atom(name);
    bytes.append(reinterpret_cast<const char*>(&atom), sizeof atom);
  }
  return Gives("ATOM", bytes, 32);
}

void TestOwner::Own() {
  if (!reactions_.count("TARGETS")) {
    auto names = order_;
    names.insert(names.begin(), "TARGETS");
    reactions_["TARGETS"] = TargetList(names);
  }
  xcb_set_selection_owner(Connection(), Window(), Atom("CLIPBOARD"), XCB_CURRENT_TIME);
  Sync();
}

void TestOwner::Clear() {
  xcb_set_selection_owner(Connection(), XCB_NONE, Atom("CLIPBOARD"), XCB_CURRENT_TIME);
  Sync();
}

bool TestOwner::WasAskedFor(const std::string& target) const {
  return std::find(asked_.begin(), asked_.end(), target) != asked_.end();
}

void TestOwner::OnEvent(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  if (type == XCB_SELECTION_REQUEST) {
    OnRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
  } else if (type == XCB_PROPERTY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.state != XCB_PROPERTY_DELETE) return;
    for (std::size_t i = 0; i < sendings_.size(); ++i) {
      if (sendings_[i].window != notify.window || sendings_[i].property != notify.atom) continue;
      const int delay = sendings_[i].reaction.pieceDelayMs;
      if (delay)
        loop_.StartTimer(delay, [this, i] { SendNext(i); });
      else
        SendNext(i);
    }
  }
}

void TestOwner::OnRequest(const xcb_selection_request_event_t& request) {
  const std::string target = Name(request.target);
  asked_.push_back(target);
  const auto known = reactions_.find(target);
  const Reaction reaction = known == reactions_.end() ? Of(Reaction::Refuse) : known->second;
  if (reaction.kind == Reaction::Silent) return;

  if (reaction.kind == Reaction::Incremental) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(Connection(), request.requestor, XCB_CW_EVENT_MASK, &events);
    std::erase_if(sendings_, [&](const Sending& each) {
      return each.window == request.requestor && each.property == request.property;
    });
    sendings_.push_back({request.requestor, request.property, reaction});
  }
  if (reaction.kind == Reaction::Whole || reaction.kind == Reaction::Incremental)
    Put(request.requestor, request.property, reaction.piece);
  Notify(request, reaction.kind == Reaction::Refuse ? xcb_atom_t{XCB_ATOM_NONE} : request.property);
  if (reaction.answered) reaction.answered();
}

void TestOwner::SendNext(std::size_t sending) {
  if (!Running()) return;
  Sending& each = sendings_[sending];
  const std::optional<Piece> piece = each.reaction.pieces(each.next++);
  if (!piece || !Running()) return;
  Put(each.window, each.property, *piece);
  xcb_flush(Connection());
  if (piece->bytes.empty() && each.reaction.quitsAtTheEnd) Quit();
}

void TestOwner::Put(xcb_window_t window, xcb_atom_t property, const Piece& piece) {
  // A large text in several requests, as none may be longer than the server takes.
  const std::size_t step = 200 * 1024;
  std::size_t at = 0;
  do {
    const std::size_t length = std::min(step, piece.bytes.size() - at);
    xcb_change_property(Connection(), at ? XCB_PROP_MODE_APPEND : XCB_PROP_MODE_REPLACE, window, property,
                        Atom(piece.type), static_cast<std::uint8_t>(piece.format),
                        static_cast<std::uint32_t>(length * 8 / static_cast<std::size_t>(piece.format)),
                        piece.bytes.data() + at);
    at += length;
  } while (at < piece.bytes.size());
}

}  // namespace quillbox::test
