// QuickBooks as a run meets it, telling which company file each session has opened.
//
// That is the file of --company, or, where QuickBooks has none open, the one of last time or one that the user picks.
// It stands innermost: what is told is not a part of the run's record.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/Forwarding.h"

namespace twqb::cli {

using CompanyOpened = std::function<void(const std::string& path)>;

class TellingTransportFactory : public TransportFactory {
 public:
  // `opened` runs inside BeginSession, whose caller gets what it raises.
  TellingTransportFactory(TransportFactory& inner, CompanyOpened opened) : inner_(inner), opened_(std::move(opened)) {}

  std::unique_ptr<Transport> CreateTransport() override {
    return std::make_unique<TellingTransport>(inner_.CreateTransport(), opened_);
  }

 private:
  class TellingTransport : public ForwardingTransport {
   public:
    TellingTransport(std::unique_ptr<Transport> inner, CompanyOpened opened)
        : ForwardingTransport(std::move(inner)), opened_(std::move(opened)) {}

    void BeginSession(std::string_view fileName, OpenMode mode) override {
      ForwardingTransport::BeginSession(fileName, mode);
      opened_(GetCurrentCompanyFileName());
    }

   private:
    CompanyOpened opened_;
  };

  TransportFactory& inner_;
  CompanyOpened opened_;
};

}  // namespace twqb::cli
