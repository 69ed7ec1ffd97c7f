// A scratch folder for one test: deck text in, report and error lines out; stops become values.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tidearc::test {

/// What a stop of the process becomes in a test.
struct Stopped {
  int status;
};

/// Makes a temporary folder and enters it; writes `deck` to TAModel.inp; opens units NDIN, NDOUT and 0 (TAP.err) there.
/// The destructor closes all units, goes back and removes the folder.
class Scratch {
 public:
  explicit Scratch(const std::string& deck = "");
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::string report() const;                           ///< TAModel.out so far
  std::string errors() const;                           ///< TAP.err so far
  std::string contents(const std::string& file) const;  ///< a file of the folder, empty when it does not exist

 private:
  std::string folder_;
  std::string back_;
};

/// Runs `action`; the exit status when it stopped the process, nothing when it came back.
std::optional<int> stop_of(const std::function<void()>& action);

/// A text with the trailing blanks of its lines removed; and its lines, one by one.
std::string trimmed(const std::string& text);
std::vector<std::string> lines_of(const std::string& text);

}  // namespace tidearc::test
