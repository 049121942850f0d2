// What the parts of the table of operations are written with.
#pragma once

#include "tests/operations/Operations.h"

namespace qva::operations {

using Stage = OperationStage;
constexpr auto kCreate = Operation::Kind::Create;
constexpr auto kCall = Operation::Kind::Call;
constexpr auto kGet = Operation::Kind::Get;
constexpr auto kPut = Operation::Kind::Put;
constexpr auto kPutRef = Operation::Kind::PutRef;
constexpr auto kRelease = Operation::Kind::Release;

/// The creation of an object. The first three host calls are the start-up's, which does without them.
inline Operation Creation(std::u16string_view class_name) {
  return {class_name, u"", kCreate, [](Stage&) -> ReadyCall { return {}; }, 'O', "OOO"};
}

std::vector<Operation> OneToolbar();
std::vector<Operation> ButtonProperties();
std::vector<Operation> SetOfToolbars();
std::vector<Operation> ButtonsAndCommands();

}  // namespace qva::operations
