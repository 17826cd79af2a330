// The values of a stream's options: each is stored, or what it ought to have been is returned.
#pragma once

namespace kcnvrt {

struct Options;

// The reader of the arguments keeps the names of inputs; --auto is what is left when neither direction is asked for.
const char* nothing_to_store(Options& options, const char* value);

const char* stream_input(Options& options, const char* value);
const char* stream_output_dir(Options& options, const char* value);
const char* stream_resume(Options& options, const char* value);
const char* stream_at(Options& options, const char* value);
const char* stream_at_text(Options& options, const char* value);
const char* stream_id(Options& options, const char* value);
const char* stream_rejects(Options& options, const char* value);
const char* stream_problems(Options& options, const char* value);
const char* stream_on_reject(Options& options, const char* value);
const char* stream_max_rejects(Options& options, const char* value);
const char* stream_accept_rejects(Options& options, const char* value);
const char* stream_max_record(Options& options, const char* value);
const char* stream_jobs(Options& options, const char* value);
const char* stream_block(Options& options, const char* value);
const char* stream_summary(Options& options, const char* value);
const char* census_json(Options& options, const char* value);
const char* census_html(Options& options, const char* value);
const char* stream_progress(Options& options, const char* value);

}  // namespace kcnvrt
