// The two sides of a folder as if they were elsewhere: its BillingDb as a database of another maker, its company file
// as QuickBooks itself. What is called there is noted, and each call can be made to fail.
// A host takes the two by its options; what it makes of them is not known here.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/faults/Faults.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "cli/options/SystemSides.h"
#include "platform/Forwarding.h"
#include "tests/firm/WholeState.h"

namespace twqb {

// One that a host may own, in front of one that it does not.
class HandedDatabase : public ado::Provider {
 public:
  explicit HandedDatabase(ado::Provider& inner) : inner_(inner) {}
  std::unique_ptr<ado::Connection> CreateConnection() override { return inner_.CreateConnection(); }

 private:
  ado::Provider& inner_;
};
class HandedQuickBooks : public TransportFactory {
 public:
  explicit HandedQuickBooks(TransportFactory& inner) : inner_(inner) {}
  std::unique_ptr<Transport> CreateTransport() override { return inner_.CreateTransport(); }

 private:
  TransportFactory& inner_;
};

class Elsewhere {
 public:
  // `provider`: what the database's connections call theirs.
  Elsewhere(const FirmFiles& files, Machine& machine, std::string provider = "SQLFARAWAY")
      : files_(files),
        provider_(std::move(provider)),
        quickBooks_(files.Path("company.twq"), machine),
        spiedDatabase_(*this),
        spiedQuickBooks_(*this),
        calls_({.database = &spiedDatabase_, .quickbooks = &spiedQuickBooks_}, {}) {}

  [[nodiscard]] cli::OtherSides Sides() const {
    return {.billing = [this] { return std::make_unique<HandedDatabase>(*calls_.Decorated().database); },
            .quickBooks = [this] { return std::make_unique<HandedQuickBooks>(*calls_.Decorated().quickbooks); }};
  }
  [[nodiscard]] std::string Connection() const {
    return "Provider=" + provider_ + ";Data Source=" + files_.Path("billing.db");
  }
  [[nodiscard]] FaultPlatform& Calls() { return calls_; }

  // Records of kinds that the company file does not keep, by kind: what stands in the answer to a question for all.
  using ToldRecords = std::map<std::string, std::string>;
  ToldRecords told;

  std::vector<std::string> documents;   // that reached QuickBooks
  std::vector<std::string> statements;  // that reached the database: all of them are to be read-only

 private:
  class SpiedConnection : public ado::ForwardingConnection {
   public:
    SpiedConnection(std::unique_ptr<ado::Connection> inner, Elsewhere& owner)
        : ForwardingConnection(std::move(inner)), owner_(owner) {}
    [[nodiscard]] std::string Provider() const override { return owner_.provider_; }
    void SetConnectionString(std::string text) override {
      EXPECT_EQ(text, owner_.Connection());
      ForwardingConnection::SetConnectionString(owner_.files_.Connection());
    }
    std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
      owner_.statements.emplace_back(statement);
      return ForwardingConnection::Execute(statement, rowsAffected);
    }
    std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                  ado::LockType lock) override {
      owner_.statements.push_back((lock == ado::LockType::ReadOnly ? "" : "for writing: ") + std::string(statement));
      return ForwardingConnection::OpenRecordset(statement, cursor, lock);
    }

   private:
    Elsewhere& owner_;
  };
  class SpiedDatabase : public ado::Provider {
   public:
    explicit SpiedDatabase(Elsewhere& owner) : owner_(owner) {}
    std::unique_ptr<ado::Connection> CreateConnection() override {
      return std::make_unique<SpiedConnection>(owner_.database_.CreateConnection(), owner_);
    }

   private:
    Elsewhere& owner_;
  };

  class SpiedTransport : public ForwardingTransport {
   public:
    SpiedTransport(std::unique_ptr<Transport> inner, Elsewhere& owner)
        : ForwardingTransport(std::move(inner)), owner_(owner) {}
    [[nodiscard]] std::string ProcessDocument(std::string_view document) override {
      owner_.documents.emplace_back(document);
      for (const auto& [kind, records] : owner_.told) {
        if (document.find("<" + kind + "QueryRq>") == std::string_view::npos) continue;
        return "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><" + kind + "QueryRs statusCode=\"0\">" + records + "</" +
               kind + "QueryRs></QBXMLMsgsRs></QBXML>";
      }
      return ForwardingTransport::ProcessDocument(document);
    }
    [[nodiscard]] std::string ProcessSubscription(std::string_view document) override {
      owner_.documents.emplace_back(document);
      return ForwardingTransport::ProcessSubscription(document);
    }

   private:
    Elsewhere& owner_;
  };
  class SpiedQuickBooks : public TransportFactory {
   public:
    explicit SpiedQuickBooks(Elsewhere& owner) : owner_(owner) {}
    std::unique_ptr<Transport> CreateTransport() override {
      return std::make_unique<SpiedTransport>(owner_.quickBooks_.CreateTransport(), owner_);
    }

   private:
    Elsewhere& owner_;
  };

  FirmFiles files_;
  std::string provider_;
  SqliteProvider database_;
  company::CompanyTransportFactory quickBooks_;
  SpiedDatabase spiedDatabase_;
  SpiedQuickBooks spiedQuickBooks_;
  FaultPlatform calls_;
};

}  // namespace twqb
