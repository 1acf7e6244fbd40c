#include <string>

#include <glog/logging.h>

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    LOG(INFO) << "line one " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line two " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line three " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line four " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line five " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line six " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line seven " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line eight " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line nine " << number << ' ' << measure << ' ' << word;
    LOG(INFO) << "line ten " << number << ' ' << measure << ' ' << word;
}
