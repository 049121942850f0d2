// The extension's menu "Ataskaitos".
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>
#include <string>
#include <string_view>

#include "platform/calc/Uno.h"
#include "server/calc/NamedService.h"
#include "server/calc/service_names.h"

namespace qva::calc {

/// One command of the menu. Whatever fails is shown to the user in a message box and goes no further.
class MenuJob : public NamedService<cppu::WeakImplHelper2<css::task::XJobExecutor, css::lang::XServiceInfo>,
                                    kMenuJob, kMenuJob> {
 public:
  explicit MenuJob(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

  /// The commands:
  ///   run-workbook  runs the entry macro of the active workbook (OpenWorkbook::FindMain)
  ///   choose-book   lets the user choose the host's current book, of those that the embedded host has
  ///   new-report    copies the template to a file of its own in C:\Pavyzdziai and opens it
  ///   guide         opens the guide beside the component with the desktop's program for pages
  /// Any other one is the name of a sample, its file's without ending, of which a copy in C:\Pavyzdziai, in
  /// place of an earlier one, is opened and run; it stays open. With template and samples, the sample
  /// company's book becomes the current one where there is none yet.
  void SAL_CALL trigger(const OUString& command) override;

 private:
  /// Carries a command out. What the user is to be told; empty when it is nothing.
  std::u16string FailureOf(std::u16string_view command) const;
  void Run(std::u16string_view command) const;
  void RunActiveWorkbook() const;
  void MakeReport() const;
  void ShowGuide() const;
  void RunSample(std::u16string_view name) const;

  Reference<css::uno::XComponentContext> context_;
};

}  // namespace qva::calc
