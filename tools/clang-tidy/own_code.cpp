// Lets clang-tidy look at this project's own declarations alone: by default it visits those of every system header,
// too, which takes most of its time and finds nothing that it would print.
#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/CompilerInstance.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

namespace {

class OwnCode : public clang::ASTConsumer {
  bool HandleTopLevelDecl(clang::DeclGroupRef group) override {
    for (clang::Decl* declaration : group) {
      const clang::SourceManager& sources = declaration->getASTContext().getSourceManager();
      if (!sources.isInSystemHeader(declaration->getLocation())) own.push_back(declaration);
    }
    return true;
  }
  void HandleTranslationUnit(clang::ASTContext& context) override { context.setTraversalScope(own); }
  std::vector<clang::Decl*> own;
};

class Action : public clang::PluginASTAction {
  std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance&, llvm::StringRef) override {
    return std::make_unique<OwnCode>();
  }
  bool ParseArgs(const clang::CompilerInstance&, const std::vector<std::string>&) override { return true; }
  ActionType getActionType() override { return AddBeforeMainAction; }
};

clang::FrontendPluginRegistry::Add<Action> registered("own-code", "restricts checks to the project's own code");

}  // namespace
