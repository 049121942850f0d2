// What the report runner has LibreOffice do: open a workbook, run its macro, print it to PDF, close.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>
#include <string>

namespace qva::calc {

/// Runs one job inside LibreOffice, then ends LibreOffice. The job comes in environment variables, texts in
/// UTF-8:
///   QVA_JOB_WORKBOOK  path of the workbook
///   QVA_JOB_MACRO     entry macro, as Library.Module.Procedure of the workbook
///   QVA_JOB_PDF       path of the PDF to print the workbook to; nothing is printed without it
///   QVA_JOB_RESULT    path of the file that is written when all is over: "ok", or what failed
///   QVA_JOB_STEPS     path of the file that each step is added to before it is taken: two lines before the
///                     macro runs, one before the PDF is made
/// A job fails also with what the library tells of failures; a wrong answer to a window ends it, and
/// LibreOffice, on the spot.
class ReportJob : public cppu::WeakImplHelper2<css::task::XJobExecutor, css::lang::XServiceInfo> {
 public:
  explicit ReportJob(const css::uno::Reference<css::uno::XComponentContext>& context) : context_(context) {}

  void SAL_CALL trigger(const rtl::OUString& event) override;

  rtl::OUString SAL_CALL getImplementationName() override;
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override;
  css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override;

 private:
  /// Runs the job. What is written for the runner.
  std::string Outcome();
  void Run();

  css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace qva::calc
