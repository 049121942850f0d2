#include "host/ClientTools.h"

namespace qva::embedded {

const ClassDescription& Session::Description() {
  static const ClassDescription& description =
      ClassBuilder(u"Session", "What the client tools work on")
          .Method<&Session::SetBook>(u"SetBook", {{u"Book"}}, "Makes a book the one to work on")
          .Get<&Session::Book>(u"Book", {}, "The book worked on");
  return description;
}

const ClassDescription& ClientTools::Description() {
  static const ClassDescription& description =
      ClassBuilder(u"ClientTools", "The host's client tools")
          .Get<&ClientTools::Session>(u"Session", {}, "What the tools work on");
  return description;
}

}  // namespace qva::embedded
