#include <string>

#include <boost/log/trivial.hpp>

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    BOOST_LOG_TRIVIAL(info) << "line one " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line two " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line three " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line four " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line five " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line six " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line seven " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line eight " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line nine " << number << ' ' << measure << ' ' << word;
    BOOST_LOG_TRIVIAL(info) << "line ten " << number << ' ' << measure << ' ' << word;
}
