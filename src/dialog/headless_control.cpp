#include "dialog/headless_control.h"

#include <algorithm>

#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

constexpr std::intptr_t kListError = -1;
constexpr char16_t kDelete = 0x7F;

const char16_t* TextParameter(std::intptr_t second) {
  return second == 0 ? u"" : reinterpret_cast<const char16_t*>(second);
}

}  // namespace

std::intptr_t HeadlessControl::Answer(std::uint32_t message, std::uintptr_t first,
                                      std::intptr_t second) {
  switch (message) {
    case kWmSetText:
      text = TextParameter(second);
      return 1;
    case kWmGetText:
      return CopyText(first, reinterpret_cast<char16_t*>(second));
    case kEmLimitText:
      limit = first == 0 ? kDefaultTextLimit : first;
      return 1;
    case kBmGetCheck:
      return checked ? 1 : 0;
    case kBmSetCheck:
      checked = first == 1;
      return 0;
    default:
      return AnswerAsList(message, first, second);
  }
}

std::intptr_t HeadlessControl::AnswerAsList(std::uint32_t message, std::uintptr_t first,
                                            std::intptr_t second) {
  const auto index = static_cast<std::intptr_t>(first);
  const auto count = static_cast<std::intptr_t>(items.size());
  switch (message) {
    case kCbAddString:
      items.emplace_back(TextParameter(second));
      return count;
    case kCbDeleteString:
      return DeleteItem(index);
    case kCbInsertString:
      return InsertItem(index, TextParameter(second));
    case kCbResetContent:
      items.clear();
      selection = -1;
      return 0;
    case kCbGetCount:
      return count;
    case kCbGetCurSel:
      return selection;
    case kCbSetCurSel:
      return Select(index);
    case kCbSetItemData:
      return index >= 0 && index < count ? 0 : kListError;
    default:
      return 0;
  }
}

std::intptr_t HeadlessControl::CopyText(std::size_t units, char16_t* buffer) const {
  if (units == 0) return 0;
  const std::size_t copied = std::min(text.size(), units - 1);
  std::copy_n(text.begin(), copied, buffer);
  buffer[copied] = u'\0';
  return static_cast<std::intptr_t>(copied);
}

std::intptr_t HeadlessControl::DeleteItem(std::intptr_t index) {
  if (index < 0 || index >= static_cast<std::intptr_t>(items.size())) return kListError;
  items.erase(items.begin() + index);
  if (index == selection) {
    selection = -1;
  } else if (index < selection) {
    --selection;
  }
  return static_cast<std::intptr_t>(items.size());
}

std::intptr_t HeadlessControl::InsertItem(std::intptr_t index, const char16_t* item) {
  const auto count = static_cast<std::intptr_t>(items.size());
  if (index < -1 || index > count) return kListError;
  const std::intptr_t place = index == -1 ? count : index;
  items.emplace(items.begin() + place, item);
  if (selection >= place) ++selection;
  return place;
}

std::intptr_t HeadlessControl::Select(std::intptr_t index) {
  const bool exists = index >= 0 && index < static_cast<std::intptr_t>(items.size());
  selection = exists ? static_cast<std::int32_t>(index) : -1;
  return selection;
}

bool HeadlessControl::TypeKey(char16_t character) {
  if (mask && !mask->Passes(character)) return false;
  if (character == u'\b') {
    if (text.empty()) return false;
    text.pop_back();
    return true;
  }
  if (character < u' ' || character == kDelete || text.size() >= limit) return false;
  text += character;
  return true;
}

void HeadlessControl::PasteOver(std::u16string_view pasted) {
  text = pasted.substr(0, limit);
}

}  // namespace mixdecks
