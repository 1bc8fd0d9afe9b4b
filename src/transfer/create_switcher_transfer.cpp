#include <memory>
#include <new>
#include <utility>

#include "transfer/closed_transfers.h"
#include "transfer/switcher_transfer.h"

namespace mixdecks {
namespace {

/// Owns a transfer for its user and closes it at its own end.
class OwnedTransfer final : public SwitcherSide {
 public:
  explicit OwnedTransfer(std::unique_ptr<SwitcherTransfer> transfer)
      : transfer_(std::move(transfer)) {}
  ~OwnedTransfer() override { CloseTransfer(std::move(transfer_)); }

  HResult Connect(const char16_t* address) override { return transfer_->Connect(address); }
  HResult Export(StillExport still) override { return transfer_->Export(std::move(still)); }

 private:
  std::unique_ptr<SwitcherTransfer> transfer_;
};

}  // namespace

std::unique_ptr<SwitcherSide> CreateSwitcherTransfer(ExportGlobals* hostContext,
                                                     ExportControl& control) {
  try {
    return std::make_unique<OwnedTransfer>(
        std::make_unique<SwitcherTransfer>(hostContext, control));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace mixdecks
