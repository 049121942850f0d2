// A registry that refuses on demand, over any other.
#pragma once

#include <map>

#include "platform/forwarding.h"

namespace qva {

/// Lets every call through until it is told to refuse. A refused call answers the given code, as Windows'
/// registry does, and does not reach the target.
class FaultyRegistry : public ForwardingRegistry {
 public:
  using ForwardingRegistry::ForwardingRegistry;

  /// What can be refused; Query and Set are those of stored values, too.
  enum class Operation { Open, Create, Query, Set, Delete, Close };
  void Refuse(Operation operation, std::int32_t status = kRegistryAccessDenied) {
    refusals_[operation] = status;
  }
  void Allow(Operation operation) { refusals_.erase(operation); }

  std::int32_t OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                       RegistryKey& key) override {
    if (const auto refusal = RefusalOf(Operation::Open)) return refusal;
    return ForwardingRegistry::OpenKey(parent, path, access, key);
  }
  std::int32_t CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                         const RegistrySecurity& security, RegistryKey& key) override {
    if (const auto refusal = RefusalOf(Operation::Create)) return refusal;
    return ForwardingRegistry::CreateKey(parent, path, access, security, key);
  }
  std::int32_t QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                          std::span<char> data, std::uint32_t& size) override {
    if (const auto refusal = RefusalOf(Operation::Query)) return refusal;
    return ForwardingRegistry::QueryValue(key, name, type, data, size);
  }
  std::int32_t SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        std::span<const char> data) override {
    if (const auto refusal = RefusalOf(Operation::Set)) return refusal;
    return ForwardingRegistry::SetValue(key, name, type, data);
  }
  std::int32_t QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) override {
    if (const auto refusal = RefusalOf(Operation::Query)) return refusal;
    return ForwardingRegistry::QueryStored(key, name, value);
  }
  std::int32_t SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) override {
    if (const auto refusal = RefusalOf(Operation::Set)) return refusal;
    return ForwardingRegistry::SetStored(key, name, value);
  }
  std::int32_t DeleteValue(RegistryKey key, std::u16string_view name) override {
    if (const auto refusal = RefusalOf(Operation::Delete)) return refusal;
    return ForwardingRegistry::DeleteValue(key, name);
  }
  std::int32_t CloseKey(RegistryKey key) override {
    if (const auto refusal = RefusalOf(Operation::Close)) return refusal;
    return ForwardingRegistry::CloseKey(key);
  }

 private:
  /// kRegistrySuccess when there is none.
  std::int32_t RefusalOf(Operation operation) const {
    const auto found = refusals_.find(operation);
    return found == refusals_.end() ? std::int32_t{kRegistrySuccess} : found->second;
  }

  std::map<Operation, std::int32_t> refusals_;
};

}  // namespace qva
