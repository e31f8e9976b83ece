/// The parts of the network library that are no templates, compiled once.
#include <boost/asio/impl/src.hpp>
#include <boost/beast/src.hpp>
