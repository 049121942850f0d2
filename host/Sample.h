// What others than the host say of its sample companies; host/sample.sql has them.
#pragma once

#include <string_view>

namespace qva::embedded {

/// The book that is taken where the user chose none.
inline constexpr char kSampleBook[] = "MEDVILNE";

/// The folders of all its path keys, below the folder of the drives.
inline constexpr std::string_view kSampleFolders[] = {"C/Ataskaitos/Archyvas", "C/Ataskaitos/Baltija",
                                                      "C/Ataskaitos/Formos"};

}  // namespace qva::embedded
