// Excel's search for files in memory.
#pragma once

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// Application.FileSearch: looks among the files of the in-memory file system. The application has one, which
/// keeps what was set.
class FileSearch : public ModelObject<FileSearch, FileSearchData> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  /// The number of files that stand in the folder LookIn itself and whose name fits FileName.
  std::int32_t Execute();
};

}  // namespace qva::memory
