#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "x11/TestClient.h"

namespace quillbox::test {

// What an owner writes into a property.
struct Piece {
  std::string type;
  int format = 8;
  std::string bytes;
};

// How an owner reacts to a request for one target.
struct Reaction {
  enum Kind { Whole, Incremental, Refuse, Silent, WithoutProperty };
  Kind kind = Whole;
  Piece piece{};  // all of it; or what stands in the INCR property
  // The pieces that follow; nothing: the owner doesn't go on.
  std::function<std::optional<Piece>(std::size_t)> pieces{};
  int pieceDelayMs = 0;
  bool quitsAtTheEnd = false;        // ends the program with the empty piece
  std::function<void()> answered{};  // after the notification has been sent
};

inline Reaction Of(Reaction::Kind kind) { return {.kind = kind}; }
inline Reaction Gives(const std::string& type, const std::string& bytes, int format = 8) {
  return {.piece = {type, format, bytes}};
}
inline Reaction GivesPieces(std::function<std::optional<Piece>(std::size_t)> pieces, int delayMs = 0) {
  return {.kind = Reaction::Incremental,
          .piece = {"INCR", 32, std::string(4, '\1')},
          .pieces = std::move(pieces),
          .pieceDelayMs = delayMs};
}
inline Reaction GivesPieces(std::vector<Piece> pieces) {
  return GivesPieces([pieces = std::move(pieces)](std::size_t i) {
    return i < pieces.size() ? std::optional(pieces[i]) : std::nullopt;
  });
}
inline Reaction GivesInPieces(const std::string& type, const std::string& bytes, std::size_t pieceBytes) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < bytes.size(); at += pieceBytes)
    pieces.push_back({type, 8, bytes.substr(at, pieceBytes)});
  pieces.push_back({type, 8, ""});
  return GivesPieces(std::move(pieces));
}

// A program that owns the clipboard and behaves as told.
class TestOwner final : public TestClient {
 public:
  using TestClient::TestClient;

  // What is offered is listed in TARGETS, which a reaction of its own may replace.
  TestOwner& Offer(const std::string& target, Reaction reaction) {
    if (!reactions_.count(target)) order_.push_back(target);
    reactions_[target] = std::move(reaction);
    return *this;
  }
  TestOwner& OfferText(const std::string& utf8) { return Offer("UTF8_STRING", Gives("UTF8_STRING", utf8)); }
  Reaction TargetList(const std::vector<std::string>& names) {
    std::string bytes;
    for (const std::string& name : names) {
      const xcb_atom_t atom = Atom(name);
      bytes.append(reinterpret_cast<const char*>(&atom), sizeof atom);
    }
    return Gives("ATOM", bytes, 32);
  }
  void Own() {
    if (!reactions_.count("TARGETS")) {
      auto names = order_;
      names.insert(names.begin(), "TARGETS");
      reactions_["TARGETS"] = TargetList(names);
    }
    SetOwner("CLIPBOARD", Window());
  }
  void Clear() { SetOwner("CLIPBOARD", XCB_NONE); }
  std::size_t Asked() const { return asked_.size(); }
  bool WasAskedFor(const std::string& target) const {
    return std::find(asked_.begin(), asked_.end(), target) != asked_.end();
  }

 private:
  struct Sending {
    xcb_window_t window;
    xcb_atom_t property;
    Reaction reaction;
    std::size_t next = 0;
  };

  void OnEvent(const xcb_generic_event_t& event) override {
    const int type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST)
      return OnRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    if (type != XCB_PROPERTY_NOTIFY) return;
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

  void OnRequest(const xcb_selection_request_event_t& request) {
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
      Write(request.requestor, request.property, reaction.piece);
    Notify(request, reaction.kind == Reaction::Refuse ? xcb_atom_t{XCB_ATOM_NONE} : request.property);
    if (reaction.answered) reaction.answered();
  }

  void SendNext(std::size_t sending) {
    if (!Running()) return;
    Sending& each = sendings_[sending];
    const std::optional<Piece> piece = each.reaction.pieces(each.next++);
    if (!piece || !Running()) return;
    Write(each.window, each.property, *piece);
    xcb_flush(Connection());
    if (piece->bytes.empty() && each.reaction.quitsAtTheEnd) Quit();
  }

  // A large text in several requests, as none may be longer than the server takes.
  void Write(xcb_window_t window, xcb_atom_t property, const Piece& piece) {
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

  std::map<std::string, Reaction> reactions_;
  std::vector<std::string> order_, asked_;
  std::vector<Sending> sendings_;
};

}  // namespace quillbox::test
