#pragma once

namespace quillbox {

// The signals that ask the program to end (SIGTERM, SIGINT, SIGHUP), as a descriptor for the event loop. To
// be made before the first thread: it is the whole process that must not take them in another way. SIGPIPE
// does nothing from then on: a server or a reader that goes away is an error of the next call, and no end of
// the process in the middle of that call. The programs that this one starts find it as it was.
class EndingSignals {
 public:
  EndingSignals();
  ~EndingSignals();
  EndingSignals(const EndingSignals&) = delete;
  EndingSignals& operator=(const EndingSignals&) = delete;

  // Can be read when a signal has come; -1 if there is none to be had.
  int Descriptor() const { return descriptor_; }
  // Takes one signal that has come; false if none has.
  bool Take();

 private:
  int descriptor_;
};

}  // namespace quillbox
