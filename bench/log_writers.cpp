#include "log_writers.h"

#include <kadata/log.h>
#include <log4cplus/configurator.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <stdexcept>

namespace {

constexpr std::size_t kFileSize = 10 << 20;
constexpr unsigned kFileCount = 10;

class KaDataWriter : public ILogWriter {
public:
    KaDataWriter() { CLog::SetLogConfig({15, kFileCount, static_cast<DWORD>(kFileSize)}); }
    void Write(int number) override {
        CLog::Print(CLogInfo(), _T("patient %d of %s was written to the archive in %u ms"), number, _T("practice A"), 17U);
    }
};

class SpdlogWriter : public ILogWriter {
public:
    explicit SpdlogWriter(const std::string& folder)
        : m_logger("bench",
                   std::make_shared<spdlog::sinks::rotating_file_sink_mt>(folder + "/spdlog.log", kFileSize, kFileCount)) {
        m_logger.set_pattern("%Y-%m-%d;  %H:%M:%S;  P%P.%t  @%l;\t%v\n");
        m_logger.flush_on(spdlog::level::trace);
    }
    void Write(int number) override {
        m_logger.info("patient {} of {} was written to the archive in {} ms", number, "practice A", 17U);
    }

private:
    spdlog::logger m_logger;
};

class Log4cplusWriter : public ILogWriter {
public:
    explicit Log4cplusWriter(const std::string& folder) : m_logger(Root()) {
        log4cplus::helpers::Properties properties;
        properties.setProperty("log4cplus.rootLogger", "INFO, FILE");
        properties.setProperty("log4cplus.appender.FILE", "log4cplus::RollingFileAppender");
        properties.setProperty("log4cplus.appender.FILE.File", folder + "/log4cplus.log");
        properties.setProperty("log4cplus.appender.FILE.MaxFileSize", std::to_string(kFileSize));
        properties.setProperty("log4cplus.appender.FILE.MaxBackupIndex", std::to_string(kFileCount));
        properties.setProperty("log4cplus.appender.FILE.UseLockFile", "true");
        properties.setProperty("log4cplus.appender.FILE.LockFile", folder + "/log4cplus.lock");
        properties.setProperty("log4cplus.appender.FILE.layout", "log4cplus::PatternLayout");
        properties.setProperty("log4cplus.appender.FILE.layout.ConversionPattern",
                               "%D{%Y-%m-%d;  %H:%M:%S};  P%i.%t  @%p;\t%m%n%n");
        log4cplus::PropertyConfigurator(properties).configure();
    }
    ~Log4cplusWriter() override { m_logger.removeAllAppenders(); }
    void Write(int number) override {
        LOG4CPLUS_INFO_FMT(m_logger, "patient %d of %s was written to the archive in %u ms", number, "practice A", 17U);
    }

private:
    static log4cplus::Logger Root() {
        static const log4cplus::Initializer initializer;  // it cannot be made a second time
        return log4cplus::Logger::getRoot();
    }

    log4cplus::Logger m_logger;
};

}  // namespace

std::unique_ptr<ILogWriter> OpenLog(const std::string& who, const std::string& folder) {
    if (who == "kadata") {
        return std::make_unique<KaDataWriter>();
    }
    if (who == "spdlog") {
        return std::make_unique<SpdlogWriter>(folder);
    }
    if (who == "log4cplus") {
        return std::make_unique<Log4cplusWriter>(folder);
    }
    throw std::invalid_argument("no log named " + who);
}

int RunLogChild(const std::string& who, const std::string& folder, int count) {
    const std::unique_ptr<ILogWriter> log = OpenLog(who, folder);
    log->Write(0);
    char byte = 0;
    if (write(STDOUT_FILENO, "r", 1) != 1 || read(STDIN_FILENO, &byte, 1) != 1) {
        return 1;
    }
    for (int i = 1; i <= count; ++i) {
        log->Write(i);
    }
    return 0;
}
