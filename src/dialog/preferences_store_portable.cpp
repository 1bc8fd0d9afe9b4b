#include "dialog/preferences_store.h"

namespace mixdecks {

PreferencesStore& SystemPreferences() {
  static MemoryPreferences preferences;
  return preferences;
}

}  // namespace mixdecks
