// Jobs for a LibreOffice that has started already.
#pragma once

#include <string>

namespace qva::calc {

/// Takes jobs from one pipe and tells of them in another. A job comes as its environment variables, each
/// "NAME=value" and a null character, with one more null character at the end. For each, the process is
/// copied: the copy finds the variables in its environment and comes back with true, to run the job and end,
/// and what it does is unknown to those that come after it. Here, each job is waited for; whatever it left
/// running is stopped; and at the end of the jobs' pipe the result is false, as at once where LibreOffice's
/// lock cannot be let go of.
///
/// Told are kJobsReady and the process before the first job; for each kJobStarted and its process, unless the
/// process cannot be copied, and kJobEnded and its exit status (server/calc/job_protocol.h).
/// QVA_JOB_ERRORS is the path of a file for the job's error output.
bool ServeJobs(const std::string& requests, const std::string& replies);

}  // namespace qva::calc
