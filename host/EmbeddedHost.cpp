#include "host/EmbeddedHost.h"

#include "host/ClientTools.h"
#include "host/CommonObjects.h"
#include "host/CompanyAttributes.h"
#include "host/ConditionBuilder.h"
#include "host/DataAccess.h"
#include "host/DocumentSelection.h"
#include "host/Message.h"
#include "host/MessageResource.h"
#include "host/Plant.h"
#include "host/Query.h"
#include "host/SettingsCollection.h"
#include "platform/cannot_create.h"
#include "platform/host.h"
#include "platform/text.h"

namespace qva::embedded {

EmbeddedHost::EmbeddedHost(HostOptions options, const Services& services)
    : store_(std::make_shared<HostStore>(std::move(options), services.files)),
      message_box_(*services.message_box),
      list_chooser_(services.list_chooser) {
}

ObjectPtr EmbeddedHost::Create(std::u16string_view programmatic_identifier) {
  const auto is = [&](std::u16string_view known) {
    return EqualIgnoringCase(programmatic_identifier, known);
  };
  if (is(host::kCommonObjects)) return MakeRef<CommonObjects>(store_);
  if (is(host::kPlant)) return MakeRef<Plant>();
  if (is(host::kClientTools)) return MakeRef<ClientTools>();
  if (is(host::kSettingsCollection)) return MakeRef<SettingsCollection>();
  if (is(host::kCompanyAttributes)) return MakeRef<CompanyAttributes>(store_);
  if (is(host::kDataAccess)) return MakeRef<DataAccess>(store_);
  if (is(host::kQuery)) return MakeRef<Query>();
  if (is(host::kConditionBuilder)) return MakeRef<ConditionBuilder>();
  if (is(host::kDocumentSelection)) return MakeRef<DocumentSelection>(store_, list_chooser_);
  if (is(host::kMessage)) return MakeRef<Message>(message_box_);
  if (is(host::kMessageResource)) return MakeRef<MessageResource>(store_->options().resources);
  throw CannotCreate(programmatic_identifier);
}

}  // namespace qva::embedded
