// What a job of LibreOffice's and the runner that waits for it say to each other, besides the variables of
// platform/variables.h; server/calc/ReportJob.h tells what it means.
#pragma once

namespace qva {

// The outcomes that a job tells itself.
inline constexpr char kJobOk[] = "ok";
inline constexpr char kJobFailed[] = "failed";
inline constexpr char kJobNoMacro[] = "no-macro";
inline constexpr char kJobWrongAnswer[] = "wrong-answer";

// What a LibreOffice that serves jobs writes into its pipe of replies, each with a number behind it.
inline constexpr char kJobsReady[] = "ready";
inline constexpr char kJobStarted[] = "started";
inline constexpr char kJobEnded[] = "ended";

/// How many steps a job tells of before its macro runs.
inline constexpr int kJobStepsBeforeMacro = 2;

}  // namespace qva
