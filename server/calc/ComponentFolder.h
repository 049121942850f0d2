// Where the component stands.
#pragma once

#include <filesystem>

namespace qva::calc {

/// The folder of this component, and of the modules beside it; empty when the system does not tell.
std::filesystem::path ComponentFolder();

}  // namespace qva::calc
