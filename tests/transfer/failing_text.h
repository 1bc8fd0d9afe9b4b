// Texts for which there is no memory when a test wants it so.
//
// A program that links this has it in place of the product's text.
#pragma once

namespace mixdecks {

/// Lets text number `number` (from 1) that the calling thread makes fail, and no other, for as long
/// as this lives.
class FailText {
 public:
  explicit FailText(int number);
  ~FailText();
  FailText(const FailText&) = delete;
  FailText& operator=(const FailText&) = delete;
};

/// Texts that exist.
int TextsHeld();

}  // namespace mixdecks
