// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkRole.h"
#include "LiveLinkTypes.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkVirtualSubject.generated.h"

class ILiveLinkClient;

/**
 * A subject made from other subjects rather than pushed by a source. The headless engine's client does not
 * evaluate virtual subjects yet: creating one reports itself as unimplemented.
 */
UCLASS(Abstract)
class LIVELINKINTERFACE_API ULiveLinkVirtualSubject : public UObject
{
	GENERATED_BODY()

public:
	/** Binds the virtual subject to its key, role and client. */
	virtual void Initialize(
		FLiveLinkSubjectKey InSubjectKey, TSubclassOf<ULiveLinkRole> InRole, ILiveLinkClient* InClient);

	/** Builds the subject's frame from its source subjects; called every client tick. */
	virtual void Update();

	/** The role the virtual subject produces. */
	TSubclassOf<ULiveLinkRole> GetRole() const { return Role; }

	/** The key the virtual subject was initialised with. */
	const FLiveLinkSubjectKey& GetSubjectKey() const { return SubjectKey; }

	/** The client the virtual subject was initialised with. */
	ILiveLinkClient* GetClient() const { return LiveLinkClient; }

	/** The subjects this one is made from. */
	const TArray<FLiveLinkSubjectName>& GetSubjects() const { return Subjects; }

protected:
	/** The role the virtual subject produces. */
	UPROPERTY()
	TSubclassOf<ULiveLinkRole> Role;

	/** The subjects this one is made from. */
	UPROPERTY(EditAnywhere, Category = "LiveLink")
	TArray<FLiveLinkSubjectName> Subjects;

private:
	FLiveLinkSubjectKey SubjectKey;
	ILiveLinkClient* LiveLinkClient = nullptr;
};
