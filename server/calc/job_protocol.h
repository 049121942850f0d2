// What a job of LibreOffice's and the runner that waits for it say to each other, besides the variables of
// platform/variables.h; server/calc/ReportJob.h tells what it means.
#pragma once

namespace qva {

// The outcomes that a job tells itself.
inline constexpr char kJobOk[] = "ok";
inline constexpr char kJobFailed[] = "failed";
inline constexpr char kJobNoMacro[] = "no-macro";
inline constexpr char kJobWrongAnswer[] = "wrong-answer";

// The members of the result that a job writes; those of its error, and of its period.
inline constexpr char kResultStatus[] = "status";
inline constexpr char kResultText[] = "text";
inline constexpr char kResultError[] = "error";
inline constexpr char kResultPeriod[] = "period";
inline constexpr char kErrorNumber[] = "number";
inline constexpr char kErrorSource[] = "source";
inline constexpr char kErrorText[] = "text";
inline constexpr char kErrorLine[] = "line";
inline constexpr char kPeriodFrom[] = "from";
inline constexpr char kPeriodTo[] = "to";

// What a LibreOffice that serves jobs writes into its pipe of replies, each with a number behind it.
inline constexpr char kJobsReady[] = "ready";
inline constexpr char kJobStarted[] = "started";
inline constexpr char kJobEnded[] = "ended";

/// How many steps a job tells of before its macro runs.
inline constexpr int kJobStepsBeforeMacro = 2;

}  // namespace qva
