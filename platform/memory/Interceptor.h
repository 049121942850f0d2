// One decorator for everything that speaks the automation protocol: traces, counts and failures hang on it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string_view>

#include "platform/forwarding.h"
#include "platform/memory/CallObserver.h"

namespace qva {

/// Gives out wrappers of objects. A wrapper behaves as its object and tells the observers of every call.
/// Whatever a wrapped object gives - as a result or in an argument by reference, also inside an array - comes
/// out wrapped; a wrapper that is passed to a wrapped object goes in as the object itself. While a wrapper is
/// alive, the same object gets the same wrapper (and keeps the path of the first way to it).
///
///   CallTrace trace;
///   CallFailure failure(3, AutomationError(1004, u"Microsoft Excel", u"Refused"));
///   Interceptor interceptor({&trace, &failure});
///   ObjectPtr application = interceptor.Wrap(excel, u"Application");
///   InterceptedFactory factory(interceptor, platform.object_factory);
///
/// The observers are borrowed. When the interceptor goes, wrappers that are still alive work on unobserved.
class Interceptor {
 public:
  explicit Interceptor(std::initializer_list<CallObserver*> observers);
  ~Interceptor();
  Interceptor(const Interceptor&) = delete;
  Interceptor& operator=(const Interceptor&) = delete;

  /// The wrapper of an object; `path` is what traces call it. A null reference stays one.
  ObjectPtr Wrap(const ObjectPtr& object, std::u16string_view path);

  /// What all wrappers of one interceptor share.
  class Core;

 private:
  friend class InterceptedFactory;
  friend class InterceptedForms;
  std::shared_ptr<Core> core_;
};

/// The object behind a wrapper of any interceptor; any other object as it is.
ObjectPtr Unwrap(const ObjectPtr& object);

/// A factory whose objects come out wrapped. A creation is a call of its own.
class InterceptedFactory : public ForwardingObjectFactory {
 public:
  /// Borrows the factory; shares the observers of the interceptor.
  InterceptedFactory(Interceptor& interceptor, ObjectFactory& factory)
      : ForwardingObjectFactory(factory), core_(interceptor.core_) {}

  ObjectPtr Create(std::u16string_view programmatic_identifier) override;

 private:
  std::shared_ptr<Interceptor::Core> core_;
};

/// A form factory whose forms are shown as a call: "frmDatePic.ShowModal". Their creation is one, too.
class InterceptedForms : public ui::ForwardingFormFactory {
 public:
  /// Borrows the factory; shares the observers of the interceptor.
  InterceptedForms(Interceptor& interceptor, ui::FormFactory& forms)
      : ForwardingFormFactory(forms), core_(interceptor.core_) {}

  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override;

 private:
  std::shared_ptr<Interceptor::Core> core_;
};

}  // namespace qva
