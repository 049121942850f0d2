// What the report runner has LibreOffice do: open a workbook, run its macro, print it to PDF, close.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>

#include "platform/calc/Uno.h"
#include "server/calc/NamedService.h"
#include "server/calc/service_names.h"

namespace qva::calc {

/// Runs one job inside LibreOffice, then ends LibreOffice. The job comes in environment variables, texts in
/// UTF-8:
///   QVA_JOB_WORKBOOK  path of the workbook
///   QVA_JOB_MACRO     entry macro of the workbook, as Module.Procedure or Library.Module.Procedure
///   QVA_JOB_PDF       path of the PDF to print the workbook to; nothing is printed without it
///   QVA_JOB_SHOWN     not empty: the user sees LibreOffice's windows; otherwise the cells are not painted
///   QVA_JOB_RESULT    path of the file that is written when all is over, a JSON object with the
///                     members of server/calc/job_protocol.h: the status; where that is not kJobOk, the
///                     text; the error that the macro did not handle; the workbook's period
///   QVA_JOB_STEPS     path of the file that each step is added to before it is taken, its time in
///                     milliseconds since 1970 and a tab before it: kJobStepsBeforeMacro lines before the
///                     macro runs, one before the PDF is made, one before the workbook is closed
/// A job fails also with what the library tells of failures; a wrong answer to a window ends it, and
/// LibreOffice, on the spot.
///
/// Where QVA_JOB_REQUESTS and QVA_JOB_REPLIES are the paths of pipes, LibreOffice goes on to serve jobs
/// (server/calc/JobServer.h), of which each ends its own copy of the process.
class ReportJob : public NamedService<cppu::WeakImplHelper2<css::task::XJobExecutor, css::lang::XServiceInfo>,
                                      kReportJob, kReportJob> {
 public:
  explicit ReportJob(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

  void SAL_CALL trigger(const OUString& event) override;

 private:
  Reference<css::uno::XComponentContext> context_;
};

}  // namespace qva::calc
