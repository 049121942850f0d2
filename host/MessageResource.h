// The message resource object: the host's texts by number.
#pragma once

#include <filesystem>
#include <optional>

#include "host/ResourceFile.h"
#include "platform/member_table.h"

namespace qva::embedded {

class MessageResource : public Described<MessageResource> {
 public:
  static ClassBuilder Describe();
  /// `folder` holds a file <library>.txt for each resource library.
  explicit MessageResource(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// Takes the texts from a resource library, whose name is made of letters, digits and "_". Raises
  /// Failure::NoResourceLibrary and Failure::MalformedResource; the object is then as before.
  void Init(std::u16string library);
  /// The text of a number. Raises 9 when there is none, Failure::NotInitialised before Init.
  std::u16string Text(std::int32_t number) const;

 private:
  std::filesystem::path folder_;
  std::u16string library_;
  std::optional<ResourceTexts> texts_;
};

}  // namespace qva::embedded
