// A folder for the files of a bench that runs parts of the program.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

namespace tidearc::bench {

/// The working directory while it lives: a new folder, removed at the end with what it holds.
class Folder {
 public:
  Folder() : path_(std::filesystem::current_path() / ("bench-" + std::to_string(getpid()))) {
    std::filesystem::create_directory(path_);
    std::filesystem::current_path(path_);
  }
  ~Folder() {
    std::filesystem::current_path(path_.parent_path());
    std::filesystem::remove_all(path_);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

 private:
  std::filesystem::path path_;
};

}  // namespace tidearc::bench
