#include "host/ClientTools.h"

namespace qva::embedded {

ClassBuilder Session::Describe() {
  return ClassBuilder(u"Session", "What the client tools work on")
      .Method<&Session::SetBook>(u"SetBook", {{u"Book"}}, "Makes a book the one to work on")
      .Get<&Session::Book>(u"Book", {}, "The book worked on");
}

ClassBuilder ClientTools::Describe() {
  return ClassBuilder(u"ClientTools", "The host's client tools")
      .Get<&ClientTools::Session>(u"Session", {}, "What the tools work on");
}

}  // namespace qva::embedded
