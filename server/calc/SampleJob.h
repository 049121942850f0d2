// The extension's menu: runs one of its sample workbooks.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>

namespace qva::calc {

/// Opens a copy of a sample workbook in the user's folder C:\Pavyzdziai and runs its macro; the workbook
/// stays open. Where the host has no current book yet, the sample company's becomes it.
class SampleJob : public cppu::WeakImplHelper2<css::task::XJobExecutor, css::lang::XServiceInfo> {
 public:
  explicit SampleJob(const css::uno::Reference<css::uno::XComponentContext>& context) : context_(context) {}

  /// `name` is the sample's file name without ending. A failure is shown to the user.
  void SAL_CALL trigger(const rtl::OUString& name) override;

  rtl::OUString SAL_CALL getImplementationName() override;
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override;
  css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override;

 private:
  void Run(std::u16string_view name) const;

  css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace qva::calc
