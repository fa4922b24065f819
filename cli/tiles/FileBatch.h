#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

// Work over many files on several threads, one file per thread at a time: a progress bar over
// the bytes of all inputs (when stderr is a terminal), failures reported as they happen and
// never stopping the other files.
class FileBatch {
public:
    struct Input {
        std::string path;     // as found
        std::string relative; // below the folder it was found in, or its file name
        uint64_t size = 0;
        // The last input of the run: no file is decoded after it, so what it leaves may stay to
        // the end of the process.
        bool last = false;
    };

    struct Outcome {
        bool ok = false;
        std::string error;                 // why it failed
        std::vector<std::string> warnings; // lines worth a user's attention
        uint64_t features = 0;
        uint64_t tiles = 0;
        uint64_t bytes = 0; // written
    };

    using Work = std::function<Outcome(Input const& input)>;

    // Files stand for themselves; folders for the CityGML files (.gml, .citygml, .xml) below
    // them, sorted. Throws std::runtime_error for a path that does not exist.
    static std::vector<Input> expand(std::vector<std::string> const& paths);

    // Runs `work` for every input on `threads` threads and returns the outcomes in input order.
    // An exception thrown by `work` is that file's failure.
    static std::vector<Outcome> run(std::vector<Input> const& inputs, unsigned threads,
                                    Work const& work, std::ostream& err, std::string const& label);
};
