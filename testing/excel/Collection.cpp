#include "testing/excel/Collection.h"

namespace tolvane::testing::excel {

std::span<const Collection::Member> Collection::Members() {
  static constexpr Member kMembers[] = {
      {"Count", [](Collection& c, const Call&) { return Variant(static_cast<int>(c.items_.size())); }},
      {"Item",
       [](Collection& c, const Call& call) {
         const int index = call.At(0).AsInt();
         if (index < 1 || index > static_cast<int>(c.items_.size())) {
           throw host::HostError(host::ErrorNumber::SubscriptOutOfRange, host::kSubscriptText);
         }
         return c.items_[static_cast<std::size_t>(index - 1)];
       }},
      {"_NewEnum", [](Collection& c, const Call&) { return Enumerator(c.items_); }},
  };
  return kMembers;
}

}  // namespace tolvane::testing::excel
