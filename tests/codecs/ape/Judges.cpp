#include "Judges.h"

#include "support/TestFolder.h"
#include "support/Tool.h"

#include <cstdio>

namespace Sonmira {

namespace {

// Where Debian's libjmac-java puts it.
constexpr const char* JavaApe = "/usr/share/java/jmac.jar";

ToolResult RunJavaApe(const QList<QByteArray>& arguments) {
    return RunTool(QList<QByteArray>{"java", "-XX:TieredStopAtLevel=1", "-XX:+UseSerialGC", "-cp", JavaApe,
                                     "davaguine.jmac.core.jmacu"} +
                   arguments);
}

QByteArray Made(const QByteArray& by, const QByteArray& from, const QByteArray& to) {
    // It does not shorten a file that is there.
    std::remove(to.constData());
    RunJavaApe({by, from, to});
    return ContentOf(to);
}

}  // namespace

JudgedSound ApeByFfmpeg(const QByteArray& native, int bits) {
    const QByteArray format = bits == 8 ? "u8" : (bits == 16 ? "s16le" : "s24le");
    const ToolResult result = RunTool({"ffmpeg", "-v", "error", "-err_detect", "crccheck+explode", "-i",
                                       "file:" + native, "-f", format, "-"});
    return {result.Output, result.ExitCode == 0 ? result.Errors : "failed: " + result.Errors};
}

bool HasJavaApe() {
    return NativeExists(JavaApe) && RunTool({"java", "-version"}).ExitCode == 0;
}

QByteArray WavByJavaApe(const QByteArray& native, const QByteArray& scratch) {
    return Made("d", native, scratch);
}

QByteArray ApeByJavaApe(const QByteArray& wav, int level, const QByteArray& scratch) {
    return Made("c" + QByteArray::number(level), wav, scratch);
}

bool IsVerifiedByJavaApe(const QByteArray& native) {
    // Its exit code is always 0; it tells of a wrong sum among its errors.
    const ToolResult result = RunJavaApe({"v", native});
    return result.Output.contains("100.0") && !result.Errors.contains("Exception");
}

}  // namespace Sonmira
