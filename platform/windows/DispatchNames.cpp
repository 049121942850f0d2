#include "platform/windows/DispatchNames.h"

#include <dispex.h>

#include <algorithm>
#include <string_view>

#include "platform/text.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/Busy.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/DispatchLocale.h"
#include "platform/windows/Error.h"

namespace qva::windows {
namespace {

std::uint64_t lookup_count = 0;

struct GuidHash {
  std::size_t operator()(const GUID& guid) const {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(&guid), sizeof guid});
  }
};

/// The names that all objects of a type share; null for a type whose objects may have members of their own.
std::unordered_map<GUID, std::shared_ptr<DispatchNames>, GuidHash>& KnownTypes() {
  // Never destroyed: objects may be called until the process ends.
  static auto& types = *new std::unordered_map<GUID, std::shared_ptr<DispatchNames>, GuidHash>;
  return types;
}

GUID TypeGuid(ITypeInfo& type) {
  TYPEATTR* attributes = nullptr;
  if (FAILED(type.GetTypeAttr(&attributes)) || !attributes) return GUID_NULL;
  const auto release = [&](TYPEATTR* obtained) { type.ReleaseTypeAttr(obtained); };
  return std::unique_ptr<TYPEATTR, decltype(release)>(attributes, release)->guid;
}

/// The name of a type without the underscore that marks the interface behind a class.
std::u16string TypeNameOf(ITypeInfo& type) {
  Bstr name;
  if (FAILED(type.GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr))) {
    name.Detach();  // what a failed call leaves behind is no text
  }
  std::u16string text = name.Text();
  if (text.starts_with(u'_')) text.erase(0, 1);
  return text;
}

/// Script engines give all their objects one type, whatever members each of them has.
bool MayGrow(IDispatch& dispatch) {
  return static_cast<bool>(ComPtr<IDispatch>(&dispatch).Query<IDispatchEx>());
}

}  // namespace

std::shared_ptr<DispatchNames> DispatchNames::Of(IDispatch& dispatch) {
  ComPtr<ITypeInfo> type;
  RetryWhileBusy([&] {
    return type.Obtain(
        [&](ITypeInfo** received) { return dispatch.GetTypeInfo(0, kDispatchLocale, received); });
  });
  if (!type) return std::make_shared<DispatchNames>();

  const GUID guid = TypeGuid(*type);
  const bool is_known = KnownTypes().contains(guid);
  if (is_known && KnownTypes()[guid]) return KnownTypes()[guid];
  auto names = std::make_shared<DispatchNames>();
  if (std::u16string name = TypeNameOf(*type); !name.empty()) names->type_name_ = std::move(name);
  if (guid != GUID_NULL && !is_known) KnownTypes()[guid] = MayGrow(dispatch) ? nullptr : names;
  return names;
}

DispatchNames::Ids DispatchNames::Resolve(IDispatch& dispatch, std::u16string_view member,
                                          std::span<const NamedArgument> named) {
  Ids ids;
  if (member.empty()) {
    if (!named.empty()) throw AutomationError(kNamedArgumentNotFound);
    return ids;
  }
  if (named.empty()) {
    Recent& recent = RecentAt(member);
    if (recent.member == member) {
      ids.member = recent.id;
      return ids;
    }
    if (const auto spelled = spelled_.find(member); spelled != spelled_.end()) {
      ids.member = spelled->second;
      recent = {spelled->first, spelled->second};
      return ids;
    }
  }
  MemberIds& known = members_[ToLower(member)];
  bool is_complete = known.member != DISPID_UNKNOWN;
  for (const NamedArgument& argument : named) {
    const auto found = known.arguments.find(ToLower(argument.name));
    is_complete = is_complete && found != known.arguments.end();
    ids.arguments.push_back(is_complete ? found->second : DISPID_UNKNOWN);
  }
  ids.member = known.member;
  if (is_complete) {
    spelled_.emplace(member, known.member);
    return ids;
  }

  std::vector<std::wstring> texts{WideText(member)};
  for (const NamedArgument& argument : named) texts.push_back(WideText(argument.name));
  std::vector<LPOLESTR> names;
  names.reserve(texts.size());
  for (std::wstring& text : texts) names.push_back(text.data());
  std::vector<DISPID> answers(names.size(), DISPID_UNKNOWN);
  const HRESULT code = RetryWhileBusy([&] {
    ++lookup_count;
    return dispatch.GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), kDispatchLocale,
                                  answers.data());
  });
  if (FAILED(code) && code != DISP_E_UNKNOWNNAME) throw ErrorOf(code);
  const bool is_member_unknown = answers[0] == DISPID_UNKNOWN || (FAILED(code) && named.empty());
  if (is_member_unknown) throw AutomationError(kUnsupportedMember);
  if (FAILED(code) || std::ranges::find(answers, DISPID_UNKNOWN) != answers.end()) {
    throw AutomationError(kNamedArgumentNotFound);
  }
  known.member = answers[0];
  for (std::size_t i = 0; i < named.size(); ++i) known.arguments[ToLower(named[i].name)] = answers[i + 1];
  return {answers[0], {answers.begin() + 1, answers.end()}};
}

std::uint64_t DispatchNames::LookupCount() {
  return lookup_count;
}

}  // namespace qva::windows
