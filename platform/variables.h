// The environment variables by which users and programs direct the product.
#pragma once

namespace qva::variables {

// What answers instead of a user, and where that is told; docs/installation.md has the list.
inline constexpr char kAnswers[] = "QVA_VARNHOLT_ANSWERS";
inline constexpr char kFormAnswers[] = "QVA_VARNHOLT_FORM_ANSWERS";
inline constexpr char kMessageLog[] = "QVA_VARNHOLT_MESSAGE_LOG";

inline constexpr char kCallLog[] = "QVA_VARNHOLT_CALL_LOG";
inline constexpr char kCallLogContent[] = "QVA_VARNHOLT_CALL_LOG_CONTENT";

// What stands for Windows' own on Linux.
inline constexpr char kRegistry[] = "QVA_VARNHOLT_REGISTRY";
inline constexpr char kDrives[] = "QVA_VARNHOLT_DRIVES";
inline constexpr char kShortDate[] = "QVA_VARNHOLT_SHORT_DATE";

// The embedded host's.
inline constexpr char kHostDatabase[] = "QVA_HOST_DATABASE";
inline constexpr char kHostResources[] = "QVA_HOST_RESOURCES";
inline constexpr char kHostListAnswers[] = "QVA_HOST_LIST_ANSWERS";

// The report runner's job for LibreOffice.
inline constexpr char kJobWorkbook[] = "QVA_JOB_WORKBOOK";
inline constexpr char kJobMacro[] = "QVA_JOB_MACRO";
inline constexpr char kJobPdf[] = "QVA_JOB_PDF";
inline constexpr char kJobPrinted[] = "QVA_JOB_PRINTED";
inline constexpr char kJobResult[] = "QVA_JOB_RESULT";
inline constexpr char kJobSteps[] = "QVA_JOB_STEPS";
inline constexpr char kJobErrors[] = "QVA_JOB_ERRORS";
inline constexpr char kJobRequests[] = "QVA_JOB_REQUESTS";
inline constexpr char kJobShown[] = "QVA_JOB_SHOWN";
inline constexpr char kJobReplies[] = "QVA_JOB_REPLIES";

}  // namespace qva::variables
