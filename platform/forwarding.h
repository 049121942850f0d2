// Services that hand every call on to another of their kind: the bases of those that change a part of one,
// such as a test's that writes down what it is asked, or one that fails on demand.
//
// Each keeps the contract of its interface as far as its target does: what the target answers, gives or
// raises is the caller's as it comes. Whoever overrides an operation keeps that operation's contract; the
// target's own is Base::Operation(…). Targets are borrowed and must outlive what forwards to them.
#pragma once

#include "platform/services.h"

namespace qva {

/// What all of them have: the target.
template <class Service>
class ForwardingTo : public Service {
 public:
  explicit ForwardingTo(Service& target) : target_(target) {}

 protected:
  Service& target() const { return target_; }

 private:
  Service& target_;
};

class ForwardingRegistry : public ForwardingTo<Registry> {
 public:
  using ForwardingTo::ForwardingTo;

  std::int32_t OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                       RegistryKey& key) override {
    return target().OpenKey(parent, path, access, key);
  }
  std::int32_t CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                         const RegistrySecurity& security, RegistryKey& key) override {
    return target().CreateKey(parent, path, access, security, key);
  }
  std::int32_t QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                          std::span<char> data, std::uint32_t& size) override {
    return target().QueryValue(key, name, type, data, size);
  }
  std::int32_t SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        std::span<const char> data) override {
    return target().SetValue(key, name, type, data);
  }
  std::int32_t QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) override {
    return target().QueryStored(key, name, value);
  }
  std::int32_t SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) override {
    return target().SetStored(key, name, value);
  }
  std::int32_t DeleteValue(RegistryKey key, std::u16string_view name) override {
    return target().DeleteValue(key, name);
  }
  std::int32_t CloseKey(RegistryKey key) override { return target().CloseKey(key); }
};

class ForwardingFiles : public ForwardingTo<Files> {
 public:
  using ForwardingTo::ForwardingTo;

  std::int16_t FreeNumber() const override { return target().FreeNumber(); }
  std::unique_ptr<TextChannel> OpenChannel(std::int16_t number, std::u16string_view path,
                                           ChannelMode mode) override {
    return target().OpenChannel(number, path, mode);
  }
  std::unique_ptr<TextStream> CreateTextStream(std::u16string_view path) override {
    return target().CreateTextStream(path);
  }
  std::unique_ptr<TextStream> OpenTextStream(std::u16string_view path, StreamMode mode) override {
    return target().OpenTextStream(path, mode);
  }
  std::u16string CurrentFolder() const override { return target().CurrentFolder(); }
  void Delete(std::u16string_view path) override { target().Delete(path); }
  void Rename(std::u16string_view from, std::u16string_view to) override { target().Rename(from, to); }
  void Copy(std::u16string_view from, std::u16string_view to) override { target().Copy(from, to); }
  void CreateFolder(std::u16string_view path) override { target().CreateFolder(path); }
  bool FolderExists(std::u16string_view path) const override { return target().FolderExists(path); }
  std::vector<std::u16string> Find(std::u16string_view folder, std::u16string_view name) const override {
    return target().Find(folder, name);
  }
  Date LastModified(std::u16string_view path) const override { return target().LastModified(path); }
  double Length(std::u16string_view path) const override { return target().Length(path); }
};

class ForwardingObjectFactory : public ForwardingTo<ObjectFactory> {
 public:
  using ForwardingTo::ForwardingTo;

  ObjectPtr Create(std::u16string_view programmatic_identifier) override {
    return target().Create(programmatic_identifier);
  }
};

class ForwardingListChooser : public ForwardingTo<ListChooser> {
 public:
  using ForwardingTo::ForwardingTo;

  std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) override {
    return target().Choose(list, selected);
  }
};

class ForwardingMessageBox : public ForwardingTo<MessageBox> {
 public:
  using ForwardingTo::ForwardingTo;

  std::int32_t Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override {
    return target().Show(text, style, title);
  }
  std::int32_t Ask(std::u16string_view text, std::u16string_view title,
                   std::span<const std::u16string> captions) override {
    return target().Ask(text, title, captions);
  }
};

class ForwardingClock : public ForwardingTo<Clock> {
 public:
  using ForwardingTo::ForwardingTo;

  Date Now() const override { return target().Now(); }
  std::chrono::milliseconds Running() const override { return target().Running(); }
};

class ForwardingLocale : public ForwardingTo<Locale> {
 public:
  using ForwardingTo::ForwardingTo;

  std::u16string ShortDatePattern() const override { return target().ShortDatePattern(); }
  std::u16string LongTimePattern() const override { return target().LongTimePattern(); }
  std::u16string NameOf(DateName name, int number) const override { return target().NameOf(name, number); }
  std::u16string DecimalSeparator() const override { return target().DecimalSeparator(); }
  std::string ToAnsi(std::u16string_view text) const override { return target().ToAnsi(text); }
  std::u16string FromAnsi(std::string_view bytes) const override { return target().FromAnsi(bytes); }
};

class ForwardingEnvironment : public ForwardingTo<Environment> {
 public:
  using ForwardingTo::ForwardingTo;

  std::uint32_t GetVariable(std::u16string_view name, std::span<char> buffer) const override {
    return target().GetVariable(name, buffer);
  }
  std::u16string LibraryFolder() const override { return target().LibraryFolder(); }
};

namespace ui {

class ForwardingFormFactory : public ForwardingTo<FormFactory> {
 public:
  using ForwardingTo::ForwardingTo;

  std::unique_ptr<Form> Create(const FormDescription& description) override {
    return target().Create(description);
  }
};

/// A form before another one, which it owns.
class ForwardingForm : public Form {
 public:
  explicit ForwardingForm(std::unique_ptr<Form> target) : target_(std::move(target)) {}

  Control* Find(std::u16string_view name) override { return target_->Find(name); }
  void ShowModal() override { target_->ShowModal(); }
  void Hide() override { target_->Hide(); }
  bool Visible() const override { return target_->Visible(); }
  int Width() const override { return target_->Width(); }
  int Height() const override { return target_->Height(); }
  void StartResizer(int width, int height,
                    std::function<std::optional<ResizeMode>(std::u16string_view name)> mode) override {
    target_->StartResizer(width, height, std::move(mode));
  }

 private:
  std::unique_ptr<Form> target_;
};

}  // namespace ui

}  // namespace qva
