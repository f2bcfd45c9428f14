#include "tests/golden/GoldenCase.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

namespace tavik::golden {

namespace {

namespace fs = std::filesystem;

/// A configuration that the tool finds valid and leaves alone.
const std::string VALID_CONFIG =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    R"(<Object category="attributeList" name="TAVIK Config">)"
    R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size="6")"
    R"( type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Enable LSI Adapter" name="EnableLSIAdapter")"
    R"( size="6" type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Log File" name="LogFile" size="20")"
    R"( type="string" value="/var/log/ORVELI.log"/>)"
    R"(</Object>)";

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("can't read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> splitAtSpace(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

int toNumber(const std::string& name, const std::string& text) {
    const std::vector<std::string> words = splitAtSpace(text);
    if (words.size() != 1 || words[0].find_first_not_of("0123456789") != std::string::npos)
        throw std::runtime_error("'" + name + "' is no number");
    return std::stoi(words[0]);
}

std::string toLine(const std::string& text) {
    const bool hasEnd = !text.empty() && text.back() == '\n';
    std::string line = text.substr(0, text.size() - (hasEnd ? 1 : 0));
    if (line.find('\n') != std::string::npos) throw std::runtime_error("'cmd' has several lines");
    return line;
}

/// Words such as "opt", "both" or "exe:broken", each a place and perhaps a variant.
std::map<std::string, std::string> toVariants(const std::string& text) {
    std::map<std::string, std::string> variants;
    for (const std::string& word : splitAtSpace(text)) {
        const std::size_t colon = word.find(':');
        const std::string place = word.substr(0, colon);
        const std::string variant = colon == std::string::npos ? "full" : word.substr(colon + 1);
        if (place == "none") continue;
        if (place == "exe" || place == "opt") {
            variants[place] = variant;
        } else if (word == "both") {
            variants["exe"] = variants["opt"] = "full";
        } else if (colon == std::string::npos) {
            variants["opt"] = word;
        } else {
            throw std::runtime_error("'library' has no place " + place);
        }
    }
    return variants;
}

/// The files of a case, each taken once: what is left at the end means nothing.
class CaseFiles {
public:
    explicit CaseFiles(const fs::path& folder) : files(readFiles(folder)) {}

    std::optional<std::string> take(const std::string& name) {
        const auto node = files.extract(name);
        if (node.empty()) return std::nullopt;
        return node.mapped();
    }

    bool takeMark(const std::string& name) { return take(name).has_value(); }

    /// The files whose name has the two ends, without them.
    Files takeAll(const std::string& prefix, const std::string& suffix = "") {
        Files taken;
        for (auto file = files.begin(); file != files.end();) {
            const std::string& name = file->first;
            if (name.size() > prefix.size() + suffix.size() && name.starts_with(prefix) &&
                name.ends_with(suffix)) {
                taken[name.substr(prefix.size(), name.size() - prefix.size() - suffix.size())] =
                    file->second;
                file = files.erase(file);
            } else {
                ++file;
            }
        }
        return taken;
    }

    void expectNoMore() const {
        if (!files.empty()) throw std::runtime_error("unknown file '" + files.begin()->first + "'");
    }

private:
    Files files;
};

void takeConfig(CaseFiles& files, GoldenCase& read) {
    read.isConfigFolder = files.takeMark("config.folder");
    const bool isAbsent = files.takeMark("config.absent") || read.isConfigFolder;
    const auto initial = files.take("config");
    if (isAbsent && initial) throw std::runtime_error("'config' is there and absent");
    if (!isAbsent) read.config = initial.value_or(VALID_CONFIG);
    // Without a word about it the file stays as it is.
    const bool isAbsentAfter = files.takeMark("config.after.absent");
    const auto after = files.take("config.after");
    if (isAbsentAfter && after) throw std::runtime_error("'config.after' is there and absent");
    if (!isAbsentAfter) read.configAfter = after ? after : read.config;
}

}  // namespace

std::vector<std::string> splitWords(const std::string& line) {
    std::vector<std::string> words;
    bool isInWord = false;
    char quote = '\0';
    for (const char character : line) {
        const bool isQuote = quote == '\0' && (character == '\'' || character == '"');
        if (quote == '\0' && character == ' ') {
            isInWord = false;
            continue;
        }
        if (!isInWord) words.emplace_back();
        isInWord = true;
        if (isQuote)
            quote = character;
        else if (character == quote)
            quote = '\0';
        else
            words.back() += character;
    }
    if (quote != '\0') throw std::runtime_error("a quote has no end: " + line);
    return words;
}

GoldenCase readCase(const fs::path& folder) {
    CaseFiles files(folder);
    GoldenCase read;

    const auto line = files.take("cmd");
    if (!line) throw std::runtime_error("no file 'cmd'");
    read.words = splitWords(toLine(*line));
    const auto out = files.take("out");
    if (!out) throw std::runtime_error("no file 'out'");
    read.out = *out;
    read.err = files.take("err").value_or("");
    read.code = toNumber("code", files.take("code").value_or("0"));
    for (const std::string format : {"text", "nvmxml", "json", "esx"})
        if (const auto text = files.take("out." + format)) read.outByFormat[format] = *text;
    if (!read.outByFormat.empty() && read.words.empty())
        throw std::runtime_error("no verb to put '-output' behind");

    read.input = files.take("stdin");
    read.isInputClosed = files.takeMark("stdin.closed");
    if (read.input && read.isInputClosed) throw std::runtime_error("'stdin' is there and closed");
    if (const auto columns = files.take("columns"))
        read.columns = static_cast<unsigned short>(toNumber("columns", *columns));
    if (read.columns && read.isInputClosed)
        throw std::runtime_error("'columns' of a closed 'stdin'");

    read.variants = toVariants(files.take("library").value_or("opt"));
    read.calls = files.take("calls");
    read.orders = files.takeAll("standin/");
    for (const auto& [rest, bytes] : files.takeAll("reply", "xml"))
        read.orders["reply" + rest + "xml"] = bytes;
    for (const auto& [rest, bytes] : files.takeAll("request", "xml"))
        read.requests["request" + rest + "xml"] = bytes;

    takeConfig(files, read);
    read.files = files.takeAll("files/");
    files.expectNoMore();
    return read;
}

std::vector<fs::path> findCases(const fs::path& root) {
    std::vector<fs::path> cases;
    std::vector<fs::path> open{root};
    while (!open.empty()) {
        const fs::path folder = open.back();
        open.pop_back();
        const std::vector<fs::directory_entry> entries{fs::directory_iterator(folder), {}};
        const bool isCase =
            entries.empty() || std::any_of(entries.begin(), entries.end(),
                                           [](const auto& entry) { return !entry.is_directory(); });
        if (isCase && folder != root)
            cases.push_back(folder);
        else
            for (const auto& entry : entries)
                if (entry.is_directory()) open.push_back(entry.path());
    }
    std::sort(cases.begin(), cases.end());
    return cases;
}

Files readFiles(const fs::path& folder, const std::set<std::string>& without) {
    Files files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = fs::relative(entry.path(), folder).string();
        if (without.contains(name)) continue;
        if (entry.is_symlink())
            files[name] = "link";
        else if (entry.is_regular_file())
            files[name] = readFile(entry.path());
        else if (!entry.is_directory())
            files[name] = "special file";
        else if (fs::is_empty(entry.path()))
            files[name] = "folder";
    }
    return files;
}

}  // namespace tavik::golden
