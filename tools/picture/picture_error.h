// Why a picture file cannot be used, and what its owner can do about it.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace mixdecks {

/// Both texts begin in lower case and end without a full stop.
class PictureError : public std::runtime_error {
 public:
  PictureError(const std::string& why, std::string remedy)
      : std::runtime_error(why), remedy_(std::move(remedy)) {}
  const std::string& Remedy() const noexcept { return remedy_; }

 private:
  std::string remedy_;
};

/// The file ends before what its own header announces.
class TruncatedPicture : public PictureError {
 public:
  TruncatedPicture()
      : PictureError("the file ends early, part of the picture is missing",
                     "copy or export the picture again") {}
};

/// The file contradicts itself.
class DamagedPicture : public PictureError {
 public:
  explicit DamagedPicture(const std::string& why)
      : PictureError("the file is damaged: " + why, "copy or export the picture again") {}
};

}  // namespace mixdecks
