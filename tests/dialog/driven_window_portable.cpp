#include "tests/dialog/driven_window.h"

namespace mixdecks::testing {

std::vector<WindowAdapter> WindowAdapters() {
  return {HeadlessAdapter()};
}

}  // namespace mixdecks::testing
