#pragma once

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
  Piece piece;  // all of it; or what stands in the INCR property
  // The pieces that follow; nothing: the owner doesn't go on.
  std::function<std::optional<Piece>(std::size_t)> pieces;
  int pieceDelayMs = 0;
  bool quitsAtTheEnd = false;      // ends the program with the empty piece
  std::function<void()> answered;  // after the notification has been sent
};

Reaction Of(Reaction::Kind kind);
Reaction Gives(const std::string& type, const std::string& bytes, int format = 8);
Reaction GivesInPieces(const std::string& type, const std::string& bytes, std::size_t pieceBytes);
Reaction GivesPieces(std::vector<Piece> pieces);

// A program that owns the clipboard and behaves as told.
class TestOwner final : public TestClient {
 public:
  explicit TestOwner(PollEventLoop& loop) : TestClient(loop) {}

  // What is offered is listed in TARGETS, which a reaction of its own may replace.
  TestOwner& Offer(const std::string& target, Reaction reaction);
  TestOwner& OfferText(const std::string& utf8);
  void Own();
  void Clear();
  const std::vector<std::string>& Asked() const { return asked_; }
  bool WasAskedFor(const std::string& target) const;
  Reaction TargetList(const std::vector<std::string>& names);

 private:
  struct Sending {
    xcb_window_t window;
    xcb_atom_t property;
    Reaction reaction;
    std::size_t next = 0;
  };

  void OnEvent(const xcb_generic_event_t& event) override;
  void OnRequest(const xcb_selection_request_event_t& request);
  void SendNext(std::size_t sending);
  void Put(xcb_window_t window, xcb_atom_t property, const Piece& piece);

  std::map<std::string, Reaction> reactions_;
  std::vector<std::string> order_;
  std::vector<std::string> asked_;
  std::vector<Sending> sendings_;
};

}  // namespace quillbox::test
