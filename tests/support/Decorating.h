// Makers of seam objects that put a decorator around each one that the maker inside makes.
//
// A decorator takes what was made, and what all decorators of the maker share: notes, a log, a count.
#pragma once

#include <memory>

#include "platform/Platform.h"

namespace twqb {

template <typename Decorator, typename Shared>
class DecoratingProvider : public ado::Provider {
 public:
  DecoratingProvider(ado::Provider& inner, Shared& shared) : inner_(inner), shared_(shared) {}
  std::unique_ptr<ado::Connection> CreateConnection() override {
    return std::make_unique<Decorator>(inner_.CreateConnection(), shared_);
  }

 private:
  ado::Provider& inner_;
  Shared& shared_;
};

template <typename Decorator, typename Shared>
class DecoratingTransportFactory : public TransportFactory {
 public:
  DecoratingTransportFactory(TransportFactory& inner, Shared& shared) : inner_(inner), shared_(shared) {}
  std::unique_ptr<Transport> CreateTransport() override {
    return std::make_unique<Decorator>(inner_.CreateTransport(), shared_);
  }

 private:
  TransportFactory& inner_;
  Shared& shared_;
};

}  // namespace twqb
