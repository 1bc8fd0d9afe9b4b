#include "plugin/export_main.h"

#include "plugin/front_end.h"

void MixdecksExportMain(std::int16_t selector, void* record, std::intptr_t* data,
                        std::int16_t* result) {
  mixdecks::RunSelector(mixdecks::FrontEndDialogs(), selector, record, data, result);
}
