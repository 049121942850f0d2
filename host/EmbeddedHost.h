// The embedded host: the host system's components over SQLite, for places where the host is not installed.
#pragma once

#include <memory>

#include "host/HostOptions.h"
#include "host/HostStore.h"
#include "platform/object_factory.h"
#include "platform/services.h"

namespace qva::embedded {

/// Creates the components by the programmatic identifiers of platform/host.h, and nothing else: any other
/// identifier raises 429. Creating one touches no file; the objects do so when they need to, and may outlive
/// the factory.
class EmbeddedHost : public ObjectFactory {
 public:
  /// Borrows message box, list chooser and files of the services, which must outlive the objects. There may
  /// be no list chooser; a selection then refuses to open.
  EmbeddedHost(HostOptions options, const Services& services);

  ObjectPtr Create(std::u16string_view programmatic_identifier) override;

 private:
  std::shared_ptr<HostStore> store_;
  MessageBox& message_box_;
  ListChooser* list_chooser_;
};

}  // namespace qva::embedded
